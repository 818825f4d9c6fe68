#include "program/routines.h"

#include "program/globals.h"

void MakeDrawingObjects()
{
    globals.interfaceFont = CreateFontA(14, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "MS Sans Serif");
    globals.backgroundBrush = CreateSolidBrush(GetSysColor(COLOR_BTNFACE));
}

void DeleteDrawingObjects()
{
    if (globals.backgroundBrush != nullptr)
        DeleteObject(globals.backgroundBrush);
    globals.backgroundBrush = nullptr;
    if (globals.interfaceFont != nullptr)
        DeleteObject(globals.interfaceFont);
    globals.interfaceFont = nullptr;
}

HBRUSH SetControlColors(HWND window, HDC dc)
{
    SetBkColor(dc, GetSysColor(COLOR_BTNFACE));
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    POINT origin = {0, 0};
    ClientToScreen(window, &origin);
    UnrealizeObject(globals.backgroundBrush);
    SetBrushOrgEx(dc, origin.x, origin.y, nullptr);
    return globals.backgroundBrush;
}

void CenterOnScreen(HWND window)
{
    RECT rect = {};
    GetWindowRect(window, &rect);
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    const int x = (GetSystemMetrics(SM_CXSCREEN) - width) / 2;
    const int y = (GetSystemMetrics(SM_CYSCREEN) - height) / 2;
    SetWindowPos(window, HWND_TOP, x, y, width, height, SWP_NOSIZE);
}

static BOOL CALLBACK GiveFont(HWND child, LPARAM font)
{
    SendMessageA(child, WM_SETFONT, (WPARAM)font, 0);
    return TRUE;
}

void ApplyFontToChildren(HWND window, HFONT font)
{
    HWND first = GetDlgItem(window, IDOK);
    if (first == nullptr)
        first = GetDlgItem(window, IDYES);
    if (first != nullptr)
        SetFocus(first);
    if (font != nullptr)
        EnumChildWindows(window, GiveFont, (LPARAM)font);
}

LONG GetClientWidth(HWND window)
{
    RECT rect = {};
    GetClientRect(window, &rect);
    return rect.right; // the left is 0
}

LONG GetClientHeight(HWND window)
{
    RECT rect = {};
    GetClientRect(window, &rect);
    return rect.bottom;
}
