// Where windows are, how large they are, and whether they show. All in logical pixels.
#pragma once

#include "platform/native/user/window_table.h"

// The widths of what lies around the client area of a top-level window: what the display tells, or
// a menu bar.
RECT FrameAround(const Window *window);

// The display tells a top-level window's outer rectangle on the screen, and the widths of what lies
// around its client area. WM_SIZE is sent at once when the client size changed. Nothing happens for
// a dead window.
void ReportRect(HWND window, const RECT &outer, const RECT &around);

// The display has told no other rectangle of the window for a while: it may be asked again for a
// size that it refused. WM_SIZE is sent when a question was withheld.
void ReportSettled(HWND window);

// Sends WM_SIZE with the client size; nothing to a dead window.
void TellSize(HWND window);

// Whether windows of a style (WS_) are told their size when they are first shown, not when they are
// made.
bool IsSizedWhenShown(DWORD style);

// Lets a window take input or not; nothing happens for a dead one.
void SetTakesInput(HWND window, bool takesInput);
