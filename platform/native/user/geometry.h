// Where windows are, how large they are, and whether they show.
#pragma once

#include "platform/native/user/window_table.h"

// What lies around the client area of a top-level window: what the display tells, or a menu bar.
RECT FrameAround(const Window *window);

// The display tells a top-level window's outer rectangle and what lies around its client area.
// WM_SIZE is sent when the client size changed.
void ReportRect(HWND window, const RECT &outer, const RECT &around);

// The display has told no other rectangle of the window for a while.
void ReportSettled(HWND window);

// Sends WM_SIZE with the client size.
void TellSize(HWND window);

// Whether windows of a style are told their size when they are first shown, not when they are made.
bool IsSizedWhenShown(DWORD style);

// Lets a window take input or not.
void SetTakesInput(HWND window, bool takesInput);
