// Keyboard, mouse and capture, and what the display reports of them.
#pragma once

#include "platform/win32/user.h"

// The mouse moved, or one of its buttons changed (message: WM_MOUSEMOVE and its kin), at a place in
// the window's client area. It is queued; the window with the capture gets it.
void ReportMouse(HWND window, UINT message, int x, int y);

// A key went down (VK_ number) in the window that has the keyboard.
void ReportKey(HWND window, int key, bool isShifted);

// A push button was pressed.
void ReportClick(HWND button);

// A window of ours has the keyboard now; NULL: none has.
void ReportFocus(HWND window);

// The user wants the window closed. It is posted.
void ReportClose(HWND window);

// The window that has the keyboard, or NULL.
HWND FocusWindow();

// A window goes: it has neither keyboard nor capture.
void ForgetInput(HWND window);

// To a button: as if it had been pressed and released.
#define BM_CLICK 0x00F5
