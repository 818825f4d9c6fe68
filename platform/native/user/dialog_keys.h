// Keys in a dialog: which control they move to, which command they give.
#pragma once

#include "platform/win32/user.h"

// The control after (or before) one that the Tab key reaches; from NULL the first (or last). NULL
// when there is none.
HWND NextTabStop(HWND dialog, HWND from, bool isBackwards);

// Treats a key that belongs to the dialog, not to the control that has the keyboard. Returns false
// for every other message.
bool TreatDialogKey(HWND dialog, const MSG &message);
