// Keyboard, mouse and capture, and what the display reports of them. What is queued comes after all
// that is posted; a dead window, or one that takes no input when its turn comes, gets nothing.
#pragma once

#include "platform/win32/types.h"

// The mouse moved, or one of its buttons changed, at a place in the window's client area, in
// logical pixels. message is WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK or
// WM_RBUTTONDOWN. It is queued with wParam 0 and lParam the place; the window with the capture gets
// it, in its own client area. A move to where the mouse is already is left out.
void ReportMouse(HWND window, UINT message, int x, int y);

// A key went down (VK_ number) in the window that has the keyboard. WM_KEYDOWN is queued (wParam:
// the key, lParam: whether Shift is down, which is this layer's own).
void ReportKey(HWND window, int key, bool isShifted);

// A push button was pressed. BM_CLICK is queued.
void ReportClick(HWND button);
constexpr UINT BM_CLICK = 0x00F5;

// A window of ours has the keyboard now; NULL: none has. The one before gets WM_KILLFOCUS and this
// one WM_SETFOCUS, at once.
void ReportFocus(HWND window);

// The user wants the window closed. SC_CLOSE is posted, unless it takes no input.
void ReportClose(HWND window);

// The window that has the keyboard, or NULL.
HWND FocusWindow();

// A window goes: it has neither keyboard nor capture any more, and nobody is told.
void ForgetInput(HWND window);
