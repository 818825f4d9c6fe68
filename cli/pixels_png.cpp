#include "cli/pixels_png.h"

#include "platform/codec/png_file.h"

#include <algorithm>

#define LEAST_OPAQUE 0xFF000000u

std::vector<BYTE> MakePngOf(const PicturePixels *pixels, PngChannels channels)
{
    const bool hasAlpha =
        channels == PngRgba || std::any_of(pixels->values.begin(), pixels->values.end(),
                                           [](DWORD value) { return value < LEAST_OPAQUE; });
    const size_t depth = hasAlpha ? 4 : 3;
    PngBytes rows((1 + depth * (size_t)pixels->width) * (size_t)pixels->height);
    BYTE *to = rows.data();
    const DWORD *value = pixels->values.data();
    for (LONG y = 0; y < pixels->height; y++) {
        *to++ = 0; // no filter
        for (LONG x = 0; x < pixels->width; x++, value++, to += depth) {
            to[0] = (BYTE)*value;
            to[1] = (BYTE)(*value >> 8);
            to[2] = (BYTE)(*value >> 16);
            if (hasAlpha)
                to[3] = (BYTE)(*value >> 24);
        }
    }
    return MakePngFile((DWORD)pixels->width, (DWORD)pixels->height, hasAlpha, rows);
}
