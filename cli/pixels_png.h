// Pixels as a PNG file, which every desktop and browser shows.
#pragma once

#include "export/picture_pixels.h"

#define MOST_PICTURE_BYTES (72u << 20) // past what mostDecodedPixels take

enum PngChannels {
    PngRgba,
    PngFewest, // without alpha when nothing is clear
};

// Packs the pixels into a file.
std::vector<BYTE> MakePngOf(const PicturePixels *pixels, PngChannels channels);
