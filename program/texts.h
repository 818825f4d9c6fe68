// The program's message texts.
#pragma once

#include "platform/win32.h"

// Loads a text of the program's string table into the one shared buffer of 260 bytes and returns
// that buffer; the next call overwrites it. An id without text gives
// "String table error - this application may be damaged". Never fails.
char *LoadMessageText(UINT id);
