// The answers to messages that a window's own procedure does not treat.
#include "platform/native/user/painting.h"
#include "platform/native/user/window_table.h"
#include "platform/win32/gdi.h"
#include "platform/win32/user.h"

static LRESULT Erase(HWND window, HDC dc)
{
    const Window *record = WindowOf(window);
    if (!record || !record->windowClass->background)
        return FALSE;
    RECT all;
    GetClientRect(window, &all);
    FillRect(dc, &all, record->windowClass->background);
    return TRUE;
}

static LRESULT ColorControl(HDC dc)
{
    SetBkColor(dc, GetSysColor(COLOR_BTNFACE));
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
}

LRESULT WINAPI DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM)
{
    switch (message) {
    case WM_PAINT: return Painting(window), 0;
    case WM_ERASEBKGND: return Erase(window, reinterpret_cast<HDC>(wParam));
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC: return ColorControl(reinterpret_cast<HDC>(wParam));
    case WM_CLOSE: DestroyWindow(window); break;
    case WM_SYSCOMMAND:
        if ((wParam & 0xFFF0) == SC_CLOSE)
            SendMessageA(window, WM_CLOSE, 0, 0);
        break;
    case WM_QUERYENDSESSION: return TRUE;
    default: break;
    }
    return 0;
}
