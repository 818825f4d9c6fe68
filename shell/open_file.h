// Opening a file, with what there is to tell the user about it.
#pragma once

#include "platform/win32.h"

// Reads the resources of an executable into the open file's catalogue, which must be empty, and
// into the tree. Shows the messages for a file that is not a standard executable, is corrupt or has
// nothing of interest; a file that cannot be opened or does not begin with "MZ" is refused
// silently. Returns 1 when it was read and gave at least one entry. After 0 the caller empties tree
// and catalogue.
int ProbeAndRead(HWND tree, const char *path);
