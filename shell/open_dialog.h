// The chooser for the file to open.
#pragma once

#include "platform/win32.h"

// Asks the user for an executable or library. path holds at least MAX_PATH bytes: on entry the path
// in whose folder to start, or the empty text; on 1 the chosen file's full path. Returns 0, with
// path unchanged, when none was chosen. The filter that the user leaves selected is offered first
// the next time.
int ShowOpenDialog(HWND owner, char *path);
