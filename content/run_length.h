// Run-length compressed pixels (Microsoft's BI_RLE8 and BI_RLE4).
#pragma once

#include "platform/win32.h"

// Bytes of the whole codes that the data, of size bytes, begins with: up to its end-of-bitmap mark,
// or the first code or literal run that leaves it. bitCount is 8 or 4.
size_t RunsLength(const BYTE *data, size_t size, WORD bitCount);

#define NO_INDEX 0x100u // what the codes pass over has no colour

// Unpacks the codes of a picture, as far as they go, into its width * height colour indexes, row by
// row from the bottom; what is not reached gets NO_INDEX.
void UnpackRuns(const BYTE *data, size_t size, WORD bitCount, LONG width, LONG height,
                WORD *indexes);
