// Run-length compressed pixels (Microsoft's BI_RLE8 and BI_RLE4).
#pragma once

#include "platform/win32.h"

// Whether the data, of size bytes, reaches its end-of-bitmap mark without a code or a literal run
// that leaves it. bitCount is 8 or 4.
int RunsEnd(const BYTE *data, size_t size, WORD bitCount);
