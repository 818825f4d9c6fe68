// Class "static": left-aligned text, broken into lines, and icons (SS_ICON).
//
// The parent gives the colours (WM_CTLCOLORSTATIC). An icon control becomes as large as its icon;
// the window's text is the icon's name in the instance's resources, "#5" for number 5.
#pragma once

#include "platform/win32/user.h"

LRESULT CALLBACK StaticProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);

#define SS_ICON 0x03L
