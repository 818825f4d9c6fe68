// The pixels of a picture that lies in memory, in colours with alpha whatever its form, and smaller
// ones of them. Memory that is not there is told by std::bad_alloc.
#pragma once

#include "platform/win32.h"

#include <vector>

struct PicturePixels {
    LONG width;  // pixels
    LONG height; // rows
    // Row by row from the top; each as content/dib.h has it: red in bits 0-7, green, blue, and
    // alpha in bits 24-31, by which the others are not multiplied.
    std::vector<DWORD> values;
};

// Reads an icon image of size bytes (content/dib.h). What its mask covers is clear; of 32 bits the
// alpha holds, unless it is 0 everywhere, as in pictures from before there was one. Returns false,
// with no pixels, when it does not lie in the block or has more than mostDecodedPixels.
bool ReadIconPixels(const BYTE *icon, DWORD size, PicturePixels *pixels);

// The same for a bitmap of size bytes, of any depth, with bit fields or run lengths too, which have
// no mask: what run lengths pass over is black, as where the window draws them.
bool ReadBitmapPixels(const BYTE *bitmap, DWORD size, PicturePixels *pixels);

// The same for a packed DIB of size bytes as the PNG codec decodes it: 32 bits a pixel, stored
// bottom-up, whose alpha holds in any case. Returns false also for any other.
bool ReadDecodedPixels(const BYTE *dib, DWORD size, PicturePixels *pixels);

// Makes the picture so small that no side is longer than `side` pixels; one that is that small
// already stays. A pixel becomes the average of the area that it stands for, each colour weighed by
// its alpha.
void ShrinkPixels(PicturePixels *pixels, LONG side);
