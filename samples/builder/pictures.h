// Pictures in the forms in which executables hold them: device-independent bitmaps without a file
// header, icon images and their groups, and PNG.
#pragma once

#include "samples/builder/bytes.h"

#include <string_view>

// A pixel is 0xAARRGGBB; the first one is the top left.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels; // width * height, row by row from the top

    uint32_t &At(int x, int y)
    {
        return pixels[(size_t)y * (size_t)width + (size_t)x];
    }
    const uint32_t &At(int x, int y) const
    {
        return pixels[(size_t)y * (size_t)width + (size_t)x];
    }
};

Picture MakePicture(int width, int height, uint32_t fill);

// The index of the colour that is nearest to the pixel; alpha does not count.
unsigned NearestColor(const std::vector<uint32_t> &colors, uint32_t pixel);

enum class DibForm {
    Plain,
    Core,      // the old 12-byte header, with three bytes a colour
    TopDown,   // a negative height
    RunLength, // BI_RLE8 or BI_RLE4
    BitFields, // BI_BITFIELDS: 16 bits as 5-6-5, 32 bits with red in the low byte
};

// The bits are 1, 4, 8, 16, 24 or 32. Up to 8 bits every pixel takes the nearest colour of the
// table `colors`; a table that is empty is filled with the picture's own colours in the order of
// appearance. The table has colors.size() entries when `countColors` (and says so in the header),
// else a full 2, 16 or 256.
Bytes MakeDib(const Picture &picture, int bits, DibForm form = DibForm::Plain,
              std::vector<uint32_t> colors = {}, bool countColors = false);

// The file header that turns a DIB into a BMP file, and the DIB.
Bytes MakeBmpFile(const Bytes &dib);

// An icon image: a DIB of twice the height and the mask, set (and the picture black, below 32 bits)
// where the alpha is below 128. Up to 8 bits `colors` is as for MakeDib and has to hold black.
Bytes MakeIconImage(const Picture &picture, int bits, std::vector<uint32_t> colors = {});

// A cursor: the hot spot and a monochrome icon image. Opaque pixels are black or white, the rest
// leaves the screen as it is.
Bytes MakeCursorImage(const Picture &picture, int hotX, int hotY);

struct IconGroupMember {
    int width;
    int height;
    int bits;
    size_t size; // bytes of the image
    unsigned id;
};
Bytes MakeIconGroup(const std::vector<IconGroupMember> &members);

// An ICO file of one image; a CUR file of one, with its hot spot at the image's start.
Bytes MakeIcoFile(const Picture &picture, int bits);
Bytes MakeCurFile(const Picture &picture, int hotX, int hotY);

// A PNG of 8-bit red, green, blue and alpha.
Bytes MakePng(const Picture &picture);

// A PNG from its pieces: rows are the unpacked scan lines, each with its filter byte in front,
// as they lie in the file after unpacking. `before` holds whole chunks to stand before the pixels.
Bytes MakePngOf(uint32_t width, uint32_t height, int bitDepth, int colorType, int interlace,
                const Bytes &rows, const Bytes &before = {});
Bytes MakePngChunk(std::string_view type, const Bytes &data);
