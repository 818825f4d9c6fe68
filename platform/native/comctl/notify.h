// How a control tells its parent what happened to it.
#pragma once

#include "platform/win32/user.h"

// Sends WM_NOTIFY with the record that begins with `header`; fills it with control and code.
// Answers what the parent does; 0 without a parent.
LRESULT NotifyParent(HWND control, UINT code, NMHDR *header);

// The same with nothing but control and code.
LRESULT NotifyParent(HWND control, UINT code);
