#include "platform/native/user/button.h"

#include <memory>

#include "platform/native/user/control_font.h"
#include "platform/native/user/input.h"
#include "platform/native/user/painting.h"
#include "platform/native/user/text_lines.h"
#include "platform/native/user/window_table.h"
#include "platform/win32/gdi.h"
#include "platform/win32/user.h"

namespace
{

struct ButtonState : ControlState {
    bool isDown = false;
};

} // namespace

static void PaintOwnerDrawn(HWND button)
{
    Painting painting(button);
    const Window *record = WindowOf(button);
    if (!painting.dc || !record)
        return;
    const HWND parent = record->parent;
    const ButtonState *state = StateOf<ButtonState>(button);
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_BUTTON;
    item.CtlID = static_cast<UINT>(record->id);
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = (state && state->isDown ? ODS_SELECTED : 0u) |
                     (record->style & WS_DISABLED ? ODS_DISABLED : 0u) |
                     (FocusWindow() == button ? ODS_FOCUS : 0u);
    item.hwndItem = button;
    item.hDC = painting.dc;
    GetClientRect(button, &item.rcItem);
    SendMessageA(parent, WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(painting.dc),
                 reinterpret_cast<LPARAM>(button));
    const ControlFont font(button, painting.dc);
    SendMessageA(parent, WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

// What its owner does not draw over has the colour that the parent gives it.
static LRESULT EraseOwnerDrawn(HWND button, WPARAM dc)
{
    const Window *record = WindowOf(button);
    const auto brush = reinterpret_cast<HBRUSH>(
        SendMessageA(record->parent, WM_CTLCOLORBTN, dc, reinterpret_cast<LPARAM>(button)));
    RECT all;
    if (GetClientRect(button, &all))
        FillRect(reinterpret_cast<HDC>(dc), &all, brush);
    return TRUE;
}

static void PaintGroupBox(HWND button)
{
    constexpr LONG captionLeft = 9, captionGap = 2;
    Painting painting(button);
    if (!painting.dc)
        return;
    const Window *record = WindowOf(button);
    const auto ground = reinterpret_cast<HBRUSH>(SendMessageA(record->parent, WM_CTLCOLORSTATIC,
                                                              reinterpret_cast<WPARAM>(painting.dc),
                                                              reinterpret_cast<LPARAM>(button)));
    const ControlFont selected(button, painting.dc);
    const Font &font = FontOf(button);
    const std::string caption = WithoutMnemonic(record->text);
    RECT all;
    GetClientRect(button, &all);
    FillRect(painting.dc, &all, ground);
    const RECT frame = {0, LineHeight(font) / 2, all.right, all.bottom};
    FrameRect(painting.dc, &frame, GetSysColorBrush(COLOR_BTNSHADOW));
    if (caption.empty())
        return;
    const RECT gap = {captionLeft - captionGap, 0,
                      captionLeft + TextWidth(font, caption) + captionGap, LineHeight(font)};
    FillRect(painting.dc, &gap, ground);
    SetBkMode(painting.dc, TRANSPARENT);
    TextOutA(painting.dc, captionLeft, 0, caption.data(), static_cast<int>(caption.size()));
}

static void PaintButton(HWND button)
{
    if (IsOwnerDrawn(button))
        PaintOwnerDrawn(button);
    else if (IsGroupBox(button))
        PaintGroupBox(button);
    else
        PaintElsewhere(button);
}

static void SetDown(HWND button, bool isDown)
{
    ButtonState *state = StateOf<ButtonState>(button);
    if (!state || state->isDown == isDown)
        return;
    state->isDown = isDown;
    InvalidateRect(button, nullptr, FALSE);
}

static void TellClicked(HWND button)
{
    const Window *record = WindowOf(button);
    if (record)
        SendMessageA(record->parent, WM_COMMAND,
                     MAKEWPARAM(static_cast<WORD>(record->id), BN_CLICKED),
                     reinterpret_cast<LPARAM>(button));
}

static void Press(HWND button)
{
    SetCapture(button);
    SetFocus(button);
    SetDown(button, true);
}

static void Release(HWND button, LPARAM place)
{
    const ButtonState *state = StateOf<ButtonState>(button);
    if (!state || !state->isDown)
        return;
    RECT all;
    GetClientRect(button, &all);
    const int x = static_cast<int16_t>(LOWORD(place)), y = static_cast<int16_t>(HIWORD(place));
    SetDown(button, false);
    ReleaseCapture();
    if (x >= 0 && y >= 0 && x < all.right && y < all.bottom)
        TellClicked(button);
}

static bool IsOfKind(HWND button, DWORD kind)
{
    const Window *record = WindowOf(button);
    return record && IsOfClass(record, "button") && (record->style & BS_TYPEMASK) == kind;
}

bool IsOwnerDrawn(HWND button)
{
    return IsOfKind(button, BS_OWNERDRAW);
}

bool IsGroupBox(HWND button)
{
    return IsOfKind(button, BS_GROUPBOX);
}

bool IsPushButton(HWND window)
{
    const Window *record = WindowOf(window);
    return record && IsOfClass(record, "button") && !IsOwnerDrawn(window) && !IsGroupBox(window);
}

LRESULT CALLBACK ButtonProcedure(HWND button, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: WindowOf(button)->state = std::make_unique<ButtonState>(); break;
    case WM_PAINT: PaintButton(button); break;
    case WM_ERASEBKGND: return IsOwnerDrawn(button) ? EraseOwnerDrawn(button, wParam) : TRUE;
    case WM_SETFONT: TakeFont(button, wParam); break;
    case WM_SETFOCUS:
    case WM_KILLFOCUS: InvalidateRect(button, nullptr, FALSE); break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: Press(button); break;
    case WM_LBUTTONUP: Release(button, lParam); break;
    case WM_KEYDOWN:
        if (wParam == VK_SPACE)
            TellClicked(button);
        break;
    case BM_CLICK: TellClicked(button); break;
    default: return DefWindowProcA(button, message, wParam, lParam);
    }
    return 0;
}
