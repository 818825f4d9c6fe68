// Device-independent bitmaps that lie in a memory block: header, colour table and pixel rows, back
// to back, with no file header in front (Microsoft's BITMAPINFOHEADER and BITMAPCOREHEADER).
#pragma once

#include "platform/win32.h"

// What a header says, whichever of its two layouts it has. Absent fields are 0.
struct DibHeader {
    DWORD headerSize;  // bytes; 12 for the old layout
    LONG width;        // pixels
    LONG height;       // rows; positive: stored bottom-up
    WORD bitCount;     // bits a pixel
    DWORD compression; // BI_RGB, ...
    DWORD colorCount;  // entries of the colour table
    DWORD colorSize;   // bytes an entry: 4, or 3 for the old layout
};

// Reads the header at the start of a block of size bytes. Returns 0, with every field that the
// block is too short for 0, when it does not hold the whole header.
int ReadDibHeader(const void *data, DWORD size, DibHeader *header);

// Bytes from the header's start to the pixels; with the colour table length taken from a hostile
// file it can pass 32 bits.
unsigned long long DibPixelStart(const DibHeader *header);
