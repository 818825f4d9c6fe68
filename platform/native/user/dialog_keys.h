// Keys in a dialog: which control they move to, which command they give.
#pragma once

#include "platform/win32/user.h"

// The control after (or before) one that the Tab key reaches: visible, enabled, with WS_TABSTOP;
// after the last comes the first. From NULL, or a window that is no child of the dialog, it is the
// first (or last). NULL when there is none.
HWND NextTabStop(HWND dialog, HWND from, bool isBackwards);

// Treats a key that belongs to the dialog, not to the control that has the keyboard: a WM_KEYDOWN
// (wParam: VK_TAB, an arrow key, VK_RETURN or VK_ESCAPE; lParam: whether Shift is down) to the
// dialog or a window in it. Returns false for every other message. It may end the dialog.
bool TreatDialogKey(HWND dialog, const MSG &message);
