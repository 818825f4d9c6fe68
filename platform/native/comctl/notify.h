// How a control tells its parent what happened to it.
#pragma once

#include "platform/win32/user.h"

// Sends WM_NOTIFY (wParam: the control's id, lParam: the header) with the record that begins with
// `header`; fills the header with control, id and code. The record stays the caller's. Answers what
// the parent does; 0 without a parent, and for a dead control.
LRESULT NotifyParent(HWND control, UINT code, NMHDR *header);

// The same with nothing but control, id and code.
LRESULT NotifyParent(HWND control, UINT code);
