#include "platform/native/user/dialogs.h"

#include <algorithm>
#include <memory>

#include "platform/native/kernel/module.h"
#include "platform/native/no_memory.h"
#include "platform/native/user/control_font.h"
#include "platform/native/user/dialog_keys.h"
#include "platform/native/user/geometry.h"
#include "platform/native/user/input.h"
#include "platform/native/user/queue.h"
#include "platform/native/user/text_lines.h"
#include "platform/native/user/window_table.h"
#include "platform/win32/gdi.h"
#include "platform/win32/kernel.h"

namespace
{

struct DialogState : ControlState {
    DLGPROC procedure = nullptr;
    bool isEnded = false;
    INT_PTR result = 0;
};

// A dialog unit is a quarter of the font's mean width, and an eighth of its height.
struct Units {
    int width;
    int height;

    int X(int units) const
    {
        return (units * width + (units < 0 ? -2 : 2)) / 4;
    }

    int Y(int units) const
    {
        return (units * height + (units < 0 ? -4 : 4)) / 8;
    }
};

} // namespace

static HFONT MakeFont(const DialogTemplate &dialog)
{
    constexpr int dotsPerInch = 96, pointsPerInch = 72;
    if (!dialog.fontHeight)
        return nullptr;
    return CreateFontA(-(dialog.fontHeight * dotsPerInch + pointsPerInch / 2) / pointsPerInch, 0, 0,
                       0, 0, 0, 0, 0, 0, 0, 0, 0, 0, dialog.fontFace.c_str());
}

static bool MakeControls(HWND dialog, const DialogTemplate &plan, const Units &units,
                         HINSTANCE instance, HFONT font)
{
    for (const ControlTemplate &control : plan.controls) {
        const HWND made = CreateWindowExA(
            0, control.className.c_str(), control.text.c_str(), control.style | WS_CHILD,
            units.X(control.x), units.Y(control.y), units.X(control.width), units.Y(control.height),
            dialog, reinterpret_cast<HMENU>(static_cast<intptr_t>(control.id)), instance, nullptr);
        if (!made)
            return false;
        if (font)
            SendMessageA(made, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
    }
    return true;
}

// Whether the dialog and its controls have more pixels together than anybody's screen.
static bool IsTooLarge(const DialogTemplate &plan, const Units &units)
{
    constexpr int64_t mostPixels = 32'000'000;
    const auto area = [&units](int width, int height) {
        return int64_t{std::max(units.X(width), 0)} * std::max(units.Y(height), 0);
    };
    int64_t pixels = area(plan.width, plan.height);
    for (const ControlTemplate &control : plan.controls)
        pixels += area(control.width, control.height);
    return pixels > mostPixels;
}

// Places the dialog's window and makes its controls. False when a control's class is unknown or the
// whole is too large.
static bool FillDialog(HWND dialog, const DialogTemplate &plan, HINSTANCE instance, HWND owner,
                       HFONT font)
{
    if (font)
        WindowOf(dialog)->font = font;
    const Units units = {AverageWidth(FontOf(dialog)), LineHeight(FontOf(dialog))};
    if (IsTooLarge(plan, units))
        return false;
    const RECT around = WindowOf(dialog)->around;
    POINT place = {units.X(plan.x), units.Y(plan.y)};
    ClientToScreen(owner, &place);
    MoveWindow(dialog, place.x, place.y, units.X(plan.width) + around.left + around.right,
               units.Y(plan.height) + around.top + around.bottom, TRUE);
    return MakeControls(dialog, plan, units, instance, font);
}

// Makes the dialog's window and its controls, all hidden; the procedure gets none of their
// messages. NULL when they cannot be made.
static HWND MakeDialog(const DialogTemplate &plan, HINSTANCE instance, HWND owner, HFONT font,
                       DLGPROC procedure)
{
    const HWND dialog = CreateWindowExA(0, dialogClass, plan.caption.c_str(),
                                        plan.style & ~static_cast<DWORD>(WS_VISIBLE | WS_CHILD), 0,
                                        0, 0, 0, owner, nullptr, instance, nullptr);
    if (!dialog)
        return nullptr;
    const bool isWhole = UnlessMemoryRunsOut(false, [&] {
        auto state = std::make_unique<DialogState>();
        state->procedure = procedure;
        if (!FillDialog(dialog, plan, instance, owner, font))
            return false;
        WindowOf(dialog)->state = std::move(state);
        return true;
    });
    if (isWhole)
        return dialog;
    DestroyWindow(dialog);
    return nullptr;
}

static bool IsRunning(HWND dialog)
{
    const DialogState *state = StateOf<DialogState>(dialog);
    return state && !state->isEnded;
}

static void Initialise(HWND dialog, LPARAM parameter)
{
    const HWND first = NextTabStop(dialog, nullptr, false);
    const LRESULT wantsFocus =
        SendMessageA(dialog, WM_INITDIALOG, reinterpret_cast<WPARAM>(first), parameter);
    if (!IsRunning(dialog))
        return;
    ShowWindow(dialog, SW_SHOW);
    // A procedure that gives the keyboard itself says so by its answer.
    if (wantsFocus || !IsInside(FocusWindow(), dialog))
        SetFocus(WindowOf(first) ? first : dialog);
}

static void Loop(HWND dialog)
{
    while (IsRunning(dialog)) {
        MSG message;
        switch (WaitForMessage(&message)) {
        case Taken::Quit: return;
        case Taken::Nothing: break;
        case Taken::Message:
            if (!TreatDialogKey(dialog, message))
                DispatchMessageA(&message);
        }
    }
}

static LRESULT OnClose(HWND dialog)
{
    PostMessageA(dialog, WM_COMMAND, IDCANCEL,
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDCANCEL)));
    return 0;
}

static LRESULT Erase(HWND dialog, WPARAM dc)
{
    const auto brush = reinterpret_cast<HBRUSH>(
        SendMessageA(dialog, WM_CTLCOLORDLG, dc, reinterpret_cast<LPARAM>(dialog)));
    RECT all;
    GetClientRect(dialog, &all);
    FillRect(reinterpret_cast<HDC>(dc), &all, brush);
    return TRUE;
}

static bool AsksColor(UINT message)
{
    return message == WM_CTLCOLORMSGBOX || message == WM_CTLCOLORBTN || message == WM_CTLCOLORDLG ||
           message == WM_CTLCOLORSTATIC;
}

LRESULT CALLBACK DialogWindowProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (const DialogState *state = StateOf<DialogState>(dialog)) {
        const INT_PTR answer = state->procedure(dialog, message, wParam, lParam);
        // These two are answered by the procedure's own result.
        if (answer && (AsksColor(message) || message == WM_INITDIALOG))
            return answer;
        if (answer)
            return 0;
    }
    switch (message) {
    case WM_CLOSE: return OnClose(dialog);
    case WM_ERASEBKGND: return Erase(dialog, wParam);
    default: return DefWindowProcA(dialog, message, wParam, lParam);
    }
}

INT_PTR RunDialog(const DialogTemplate &plan, HINSTANCE instance, HWND owner, DLGPROC procedure,
                  LPARAM parameter)
{
    // With a quit request waiting there is nothing to show it for.
    if ((owner && !WindowOf(owner)) || IsQuitting())
        return 0;
    const HFONT font = MakeFont(plan);
    const HWND dialog = MakeDialog(plan, instance, owner, font, procedure);
    INT_PTR result = -1;
    if (dialog) {
        const HWND focusBefore = FocusWindow();
        SetTakesInput(owner, false);
        Initialise(dialog, parameter);
        Loop(dialog);
        SetTakesInput(owner, true);
        const DialogState *ended = StateOf<DialogState>(dialog);
        result = ended ? ended->result : 0;
        DestroyWindow(dialog);
        if (WindowOf(focusBefore))
            SetFocus(focusBefore);
    }
    if (font)
        DeleteObject(font);
    return result;
}

INT_PTR WINAPI DialogBoxParamA(HINSTANCE instance, LPCSTR templateName, HWND owner,
                               DLGPROC procedure, LPARAM parameter)
{
    const ByteReader resource = OpenResource(instance, templateName, RT_DIALOG);
    DialogTemplate plan;
    if (!UnlessMemoryRunsOut(
            false, [&] { return ReadDialogTemplate(resource.data, resource.total, &plan); }))
        return -1;
    return RunDialog(plan, instance, owner, procedure, parameter);
}

BOOL WINAPI EndDialog(HWND dialog, INT_PTR result)
{
    DialogState *state = StateOf<DialogState>(dialog);
    if (!state)
        return FALSE;
    state->isEnded = true;
    state->result = result;
    return TRUE;
}
