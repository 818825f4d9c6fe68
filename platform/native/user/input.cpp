#include "platform/native/user/input.h"

#include "platform/native/user/pictures.h"
#include "platform/native/user/queue.h"
#include "platform/native/user/window_table.h"
#include "platform/win32/user.h"

static HWND focus = nullptr;
static HWND capture = nullptr;
static POINT cursorPlace = {0, 0};

void ReportMouse(HWND window, UINT message, int x, int y)
{
    POINT place = {x, y};
    const Window *record = WindowOf(window);
    if (!record || !ClientToScreen(window, &place))
        return;
    if (message == WM_MOUSEMOVE && place.x == cursorPlace.x && place.y == cursorPlace.y)
        return;
    cursorPlace = place;
    if (const Window *capturing = WindowOf(capture)) {
        const POINT origin = ClientOriginOf(capturing);
        x = place.x - origin.x;
        y = place.y - origin.y;
        record = capturing;
    } else {
        NoteClassCursor(record->windowClass->cursor);
    }
    if (message == WM_LBUTTONDBLCLK && !(record->windowClass->style & CS_DBLCLKS))
        message = WM_LBUTTONDOWN;
    AddInput({record->self, message, 0, MAKELPARAM(x, y), place});
}

void ReportKey(HWND window, int key, bool isShifted)
{
    if (WindowOf(window))
        AddInput({window, WM_KEYDOWN, static_cast<WPARAM>(key), isShifted, cursorPlace});
}

void ReportClick(HWND button)
{
    if (WindowOf(button))
        AddInput({button, BM_CLICK, 0, 0, cursorPlace});
}

void ReportClose(HWND window)
{
    const Window *record = WindowOf(window);
    if (record && TakesInput(record))
        PostMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
}

static HWND ChangeFocus(HWND window)
{
    const HWND before = focus;
    focus = window;
    SendMessageA(before, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
    if (focus == window)
        SendMessageA(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(before), 0);
    return before;
}

void ReportFocus(HWND window)
{
    if (window != focus)
        ChangeFocus(window);
}

HWND FocusWindow()
{
    return focus;
}

HWND WINAPI SetFocus(HWND window)
{
    const Window *record = WindowOf(window);
    if (!record || !TakesInput(record))
        return nullptr;
    const HWND before = window == focus ? focus : ChangeFocus(window);
    record = WindowOf(window);
    if (record && focus == window)
        TellChange(record, WindowChange::Focus);
    return before;
}

HWND WINAPI SetCapture(HWND window)
{
    const HWND before = capture;
    if (WindowOf(window))
        capture = window;
    return before;
}

HWND WINAPI GetCapture(void)
{
    return capture;
}

BOOL WINAPI ReleaseCapture(void)
{
    capture = nullptr;
    return TRUE;
}

BOOL WINAPI GetCursorPos(LPPOINT point)
{
    *point = cursorPlace;
    return TRUE;
}

void ForgetInput(HWND window)
{
    if (focus == window)
        focus = nullptr;
    if (capture == window)
        capture = nullptr;
}
