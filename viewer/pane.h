// The display pane's contents: a picture with a line about it, the lines of a string table, or a
// hexadecimal dump.
#pragma once

#include "platform/win32.h"

// Draws entry index of a catalogue's entries block, of count records, into rect, which the caller
// has filled with white. Nothing is scrolled or scaled. Returns 0 when there is nothing to draw:
// no such entry; else 1.
int PaintResource(HDC dc, const RECT *rect, HGLOBAL entries, LONG count, LONG index);
