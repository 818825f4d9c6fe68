// The two shared drawing objects, and small routines over windows.
#pragma once

#include "platform/win32.h"

// Makes the interface font (NULL when it cannot be made) and the background brush of globals.
void MakeDrawingObjects();

// Deletes and forgets them. The windows that use them must be gone.
void DeleteDrawingObjects();

// Answers a control-colour request of window: sets the background and text colours of dc and the
// origin of its brush, and returns the background brush, which the caller answers with.
HBRUSH SetControlColors(HWND window, HDC dc);

// Moves a window to the middle of the screen and to the top of the window order, its size
// unchanged. A window larger than the screen gets a negative position.
void CenterOnScreen(HWND window);

// Gives the focus to child 1, else to child 6, where window has one; then the font, unless it is
// NULL, to every window below it.
void ApplyFontToChildren(HWND window, HFONT font);

// The window's client area, pixels; 0 when there is no such window.
LONG GetClientWidth(HWND window);
LONG GetClientHeight(HWND window);
