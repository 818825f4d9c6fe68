#include "platform/native/user/stand_in.h"

#include <algorithm>

#include "platform/native/user/control_font.h"
#include "platform/native/user/painting.h"
#include "platform/native/user/text_lines.h"
#include "platform/native/user/window_table.h"
#include "platform/win32/gdi.h"
#include "platform/win32/user.h"

constexpr DWORD CBS_DROPDOWN = 0x0002;
constexpr LONG fieldMargins = 8; // above and below the field's line of text

static void LeaveOutDroppedList(HWND control)
{
    const Window *record = WindowOf(control);
    if (!IsOfClass(record, "combobox") || !(record->style & CBS_DROPDOWN))
        return;
    const RECT &rect = record->rect;
    MoveWindow(control, rect.left, rect.top, rect.right - rect.left,
               std::min(rect.bottom - rect.top, LineHeight(FontOf(control)) + fieldMargins), TRUE);
}

static void PaintField(HWND control)
{
    Painting painting(control);
    const Window *record = WindowOf(control);
    if (!painting.dc || !record)
        return;
    RECT all;
    GetClientRect(control, &all);
    FillRect(painting.dc, &all, GetSysColorBrush(COLOR_WINDOW));
    if (!(record->style & WS_BORDER))
        FrameRect(painting.dc, &all, GetSysColorBrush(COLOR_BTNSHADOW));
}

LRESULT CALLBACK StandInProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: LeaveOutDroppedList(control); break;
    case WM_PAINT: PaintField(control); break;
    case WM_ERASEBKGND: return TRUE;
    case WM_SETFONT: TakeFont(control, wParam); break;
    default: return DefWindowProcA(control, message, wParam, lParam);
    }
    return 0;
}
