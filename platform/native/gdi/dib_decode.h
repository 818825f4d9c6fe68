// Device-independent bitmaps (Microsoft's BITMAPINFO and BITMAPCOREINFO, all depths, bit fields and
// run lengths) made plain pixels.
#pragma once

#include "platform/native/gdi/objects.h"

// What a header announces. Sizes in bytes.
struct DibLayout {
    int width;  // pixels
    int height; // rows, never negative
    bool isTopDown;
    int planes;          // any number but 0
    int bits;            // a pixel: 1, 4, 8, 16, 24, 32
    bool isRunLength;    // 4 or 8 bits
    uint32_t masks[3];   // red, green, blue; of 16 and 32 bits
    size_t tableOffset;  // of the colour table, from the header's start
    size_t tableEntries; // 0 above 8 bits
    size_t entrySize;    // 4, or 3 with the 12-byte header
    size_t infoSize;     // header, masks and colour table as a packed bitmap holds them
    size_t pixelsSize;   // the rows; of run lengths what the header says
};

// Reads a header of which `available` bytes may be read. Returns false when it is none that Windows
// draws, or when it and its colour table are longer than that.
bool ReadDibLayout(const void *info, size_t available, DibLayout *layout);

// Makes a bitmap of the picture, which owns its pixels. info is what the layout was read from;
// pixels holds pixelsSize bytes. Run lengths that leave the picture or the bytes end the drawing,
// what they skip is black. Returns false when there is no memory.
bool DecodeDib(const DibLayout &layout, const void *info, const void *pixels, size_t pixelsSize,
               Bitmap *bitmap);
