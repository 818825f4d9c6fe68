// The message dialog, whose template is the host module's.
#pragma once

#include "platform/win32.h"

// Shows a text over the owner window until the user presses a button; returns the button's id: 1,
// 2, 6 or 7. Without the host module's template nothing is shown and -1 or 0 is returned at once.
INT_PTR ShowMessage(HWND owner, const char *text);
