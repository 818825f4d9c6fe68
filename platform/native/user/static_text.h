// Class "static": text, broken into lines and with tabs, and icons (SS_ICON). Text is at the left,
// in the middle (SS_CENTER) or at the right (SS_RIGHT); without SS_NOPREFIX "&" marks a mnemonic.
//
// The parent gives the colours (WM_CTLCOLORSTATIC). An icon control becomes as large as its icon;
// the window's text is the icon's name in the instance's resources, "#5" for number 5.
#pragma once

#include "platform/win32/user.h"

LRESULT CALLBACK StaticProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam);

#define SS_CENTER 0x01L
#define SS_RIGHT 0x02L
#define SS_ICON 0x03L
#define SS_NOPREFIX 0x80L
