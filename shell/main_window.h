// The main window: its procedure, the layout of its two children and the splitter between them, the
// selection, the states of its menu and its title.
#pragma once

#include "platform/win32.h"

// Private message: lParam points to the path of a file to open, which must outlive the message.
#define WM_OPEN_FILE (WM_USER + 46)

// The smallest outer size; a smaller window is put back to it in both directions.
#define MAIN_WINDOW_WIDTH 620
#define MAIN_WINDOW_HEIGHT 440

// Half the width of the gap between tree and pane, pixels.
#define SPLITTER_MARGIN 2

// Client x coordinate of the gap's middle, pixels. Never checked against the window's width.
extern LONG splitPosition;

// The window class's procedure.
LRESULT CALLBACK MainWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Shows a name in the main window's title; "..." and the name's end when the title cannot hold it.
void SetMainTitle(const char *name);

// Shows in the title that no file is open.
void SetNoFileTitle();
