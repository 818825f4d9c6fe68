#include "cli/pixels_png.h"

#include "platform/codec/png_file.h"

#include <algorithm>

#define LEAST_OPAQUE 0xFF000000u

std::vector<BYTE> MakePngOf(const PicturePixels *pixels, PngChannels channels)
{
    const int hasAlpha =
        channels == PngRgba || std::any_of(pixels->values.begin(), pixels->values.end(),
                                           [](DWORD value) { return value < LEAST_OPAQUE; });
    const int end = hasAlpha ? 32 : 24;
    PngBytes rows;
    rows.reserve((1 + (size_t)(end / 8) * (size_t)pixels->width) * (size_t)pixels->height);
    const DWORD *value = pixels->values.data();
    for (LONG y = 0; y < pixels->height; y++) {
        rows.push_back(0);
        for (LONG x = 0; x < pixels->width; x++, value++)
            for (int shift = 0; shift < end; shift += 8)
                rows.push_back((BYTE)(*value >> shift));
    }
    return MakePngFile((DWORD)pixels->width, (DWORD)pixels->height, hasAlpha, rows);
}
