#include "samples/builder/pictures.h"

#include <algorithm>
#include <cstdlib>

#define FILE_HEADER_LENGTH 14
#define INFO_HEADER_LENGTH 40
#define CORE_HEADER_LENGTH 12

enum { Rgb = 0, Rle8 = 1, Rle4 = 2, BitFields = 3 };

Picture MakePicture(int width, int height, uint32_t fill)
{
    return {width, height, std::vector<uint32_t>((size_t)width * (size_t)height, fill)};
}

static unsigned RedOf(uint32_t pixel)
{
    return (pixel >> 16) & 0xff;
}

static unsigned GreenOf(uint32_t pixel)
{
    return (pixel >> 8) & 0xff;
}

static unsigned BlueOf(uint32_t pixel)
{
    return pixel & 0xff;
}

static bool IsOpaque(uint32_t pixel)
{
    return pixel >> 24 >= 128;
}

static int Distance(uint32_t a, uint32_t b)
{
    int red = (int)RedOf(a) - (int)RedOf(b);
    int green = (int)GreenOf(a) - (int)GreenOf(b);
    int blue = (int)BlueOf(a) - (int)BlueOf(b);
    return red * red + green * green + blue * blue;
}

unsigned NearestColor(const std::vector<uint32_t> &colors, uint32_t pixel)
{
    auto nearest = std::min_element(colors.begin(), colors.end(), [&](uint32_t a, uint32_t b) {
        return Distance(a, pixel) < Distance(b, pixel);
    });
    return (unsigned)(nearest - colors.begin());
}

static std::vector<uint32_t> ColorsOf(const Picture &picture, size_t most)
{
    std::vector<uint32_t> colors;
    for (uint32_t pixel : picture.pixels) {
        uint32_t color = pixel & 0xffffff;
        if (colors.size() < most && std::find(colors.begin(), colors.end(), color) == colors.end())
            colors.push_back(color);
    }
    return colors;
}

// One row of pixels packed at `bits`, not padded.
static Bytes PackRow(const Picture &picture, int y, int bits, const std::vector<uint32_t> &colors,
                     bool swapRed)
{
    Bytes row;
    unsigned pending = 0;
    int filled = 0;
    for (int x = 0; x < picture.width; x++) {
        uint32_t pixel = picture.At(x, y);
        if (bits == 16) {
            AddU16(row, swapRed ? (RedOf(pixel) >> 3) << 11 | (GreenOf(pixel) >> 2) << 5 |
                                      BlueOf(pixel) >> 3
                                : (RedOf(pixel) >> 3) << 10 | (GreenOf(pixel) >> 3) << 5 |
                                      BlueOf(pixel) >> 3);
        } else if (bits > 16) {
            AddU8(row, swapRed ? RedOf(pixel) : BlueOf(pixel));
            AddU8(row, GreenOf(pixel));
            AddU8(row, swapRed ? BlueOf(pixel) : RedOf(pixel));
            if (bits == 32)
                AddU8(row, pixel >> 24);
        } else {
            pending = pending << bits | NearestColor(colors, pixel);
            filled += bits;
            if (filled == 8) {
                AddU8(row, pending);
                pending = 0;
                filled = 0;
            }
        }
    }
    if (filled)
        AddU8(row, pending << (8 - filled));
    return row;
}

// Runs of equal bytes of one 8-bit row; for 4 bits, runs of pixels of one colour.
static Bytes PackRuns(const Picture &picture, int y, int bits, const std::vector<uint32_t> &colors)
{
    Bytes runs;
    int x = 0;
    while (x < picture.width) {
        unsigned color = NearestColor(colors, picture.At(x, y));
        int length = 1;
        while (length < 255 && x + length < picture.width &&
               NearestColor(colors, picture.At(x + length, y)) == color)
            length++;
        AddU8(runs, (unsigned)length);
        AddU8(runs, bits == 4 ? color << 4 | color : color);
        x += length;
    }
    return runs;
}

static Bytes PackPixels(const Picture &picture, int bits, DibForm form,
                        const std::vector<uint32_t> &colors)
{
    Bytes pixels;
    for (int i = 0; i < picture.height; i++) {
        int y = form == DibForm::TopDown ? i : picture.height - 1 - i;
        if (form == DibForm::RunLength) {
            AddBytes(pixels, PackRuns(picture, y, bits, colors));
            AddU16(pixels, i + 1 < picture.height ? 0x0000 : 0x0100); // end of line, of bitmap
        } else {
            AddBytes(pixels, PackRow(picture, y, bits, colors, form == DibForm::BitFields));
            PadTo(pixels, 4);
        }
    }
    return pixels;
}

static void AddInfoHeader(Bytes &dib, int width, int height, int bits, unsigned compression,
                          size_t imageSize, size_t colorCount)
{
    AddU32(dib, INFO_HEADER_LENGTH);
    AddU32(dib, (uint32_t)width);
    AddU32(dib, (uint32_t)height);
    AddU16(dib, 1);
    AddU16(dib, (unsigned)bits);
    AddU32(dib, compression);
    AddU32(dib, (uint32_t)imageSize);
    AddU32(dib, 0);
    AddU32(dib, 0);
    AddU32(dib, (uint32_t)colorCount);
    AddU32(dib, 0);
}

static void AddColor(Bytes &dib, uint32_t color, bool core)
{
    AddU8(dib, BlueOf(color));
    AddU8(dib, GreenOf(color));
    AddU8(dib, RedOf(color));
    if (!core)
        AddU8(dib, 0);
}

static void AddMasks(Bytes &dib, int bits)
{
    if (bits == 16)
        for (uint32_t mask : {0xf800, 0x07e0, 0x001f})
            AddU32(dib, mask);
    else
        for (uint32_t mask : {0x0000ff, 0x00ff00, 0xff0000})
            AddU32(dib, mask);
}

Bytes MakeDib(const Picture &picture, int bits, DibForm form, std::vector<uint32_t> colors,
              bool countColors)
{
    size_t fullTable = bits <= 8 ? (size_t)1 << bits : 0;
    if (colors.empty() && fullTable)
        colors = ColorsOf(picture, fullTable);
    Bytes pixels = PackPixels(picture, bits, form, colors);
    if (!countColors)
        colors.resize(fullTable);

    Bytes dib;
    if (form == DibForm::Core) {
        AddU32(dib, CORE_HEADER_LENGTH);
        AddU16(dib, (unsigned)picture.width);
        AddU16(dib, (unsigned)picture.height);
        AddU16(dib, 1);
        AddU16(dib, (unsigned)bits);
    } else {
        unsigned compression = form == DibForm::RunLength   ? (bits == 8 ? Rle8 : Rle4)
                               : form == DibForm::BitFields ? BitFields
                                                            : Rgb;
        AddInfoHeader(dib, picture.width,
                      form == DibForm::TopDown ? -picture.height : picture.height, bits,
                      compression, pixels.size(), countColors ? colors.size() : 0);
        if (form == DibForm::BitFields)
            AddMasks(dib, bits);
    }
    for (uint32_t color : colors)
        AddColor(dib, color, form == DibForm::Core);
    AddBytes(dib, pixels);
    return dib;
}

Bytes MakeBmpFile(const Bytes &dib)
{
    unsigned bits = GetU16(dib, 14);
    uint32_t colors = GetU32(dib, 32);
    if (colors == 0 && bits <= 8)
        colors = 1u << bits;
    Bytes file;
    AddText(file, "BM");
    AddU32(file, (uint32_t)dib.size() + FILE_HEADER_LENGTH);
    AddU32(file, 0);
    AddU32(file, FILE_HEADER_LENGTH + INFO_HEADER_LENGTH + colors * 4);
    AddBytes(file, dib);
    return file;
}

static void AddMask(Bytes &image, const Picture &picture)
{
    Picture mask = picture;
    for (uint32_t &pixel : mask.pixels)
        pixel = IsOpaque(pixel) ? 0 : 0xffffff;
    AddBytes(image, PackPixels(mask, 1, DibForm::Plain, {0, 0xffffff}));
}

Bytes MakeIconImage(const Picture &picture, int bits, std::vector<uint32_t> colors)
{
    Picture shown = picture;
    for (uint32_t &pixel : shown.pixels)
        if (bits < 32 && !IsOpaque(pixel))
            pixel = 0;
    if (bits <= 8 && colors.empty()) {
        colors = ColorsOf(shown, ((size_t)1 << bits) - 1);
        colors.insert(colors.begin(), 0);
    }
    Bytes image = MakeDib(shown, bits, DibForm::Plain, colors);
    PutU32(image, 8, (uint32_t)picture.height * 2);
    AddMask(image, picture);
    return image;
}

Bytes MakeCursorImage(const Picture &picture, int hotX, int hotY)
{
    Picture shown = picture;
    for (uint32_t &pixel : shown.pixels)
        pixel = IsOpaque(pixel) ? pixel : 0;
    Bytes image = MakeDib(shown, 1, DibForm::Plain, {0, 0xffffff});
    PutU32(image, 8, (uint32_t)picture.height * 2);
    AddMask(image, picture);
    Bytes cursor;
    AddU16(cursor, (unsigned)hotX);
    AddU16(cursor, (unsigned)hotY);
    AddBytes(cursor, image);
    return cursor;
}

Bytes MakeIconGroup(const std::vector<IconGroupMember> &members)
{
    Bytes group;
    AddU16(group, 0);
    AddU16(group, 1);
    AddU16(group, (unsigned)members.size());
    for (const IconGroupMember &member : members) {
        AddU8(group, (unsigned)member.width & 0xff); // 256 is written as 0
        AddU8(group, (unsigned)member.height & 0xff);
        AddU8(group, member.bits < 8 ? 1u << member.bits : 0);
        AddU8(group, 0);
        AddU16(group, 1);
        AddU16(group, (unsigned)member.bits);
        AddU32(group, (uint32_t)member.size);
        AddU16(group, member.id);
    }
    return group;
}

// The file header and the one directory entry; the last two words of the entry are the planes and
// bits of an icon, the hot spot of a cursor.
static Bytes MakeIconFile(unsigned kind, const Picture &picture, int bits, unsigned word1,
                          unsigned word2, const Bytes &image)
{
    Bytes file;
    AddU16(file, 0);
    AddU16(file, kind);
    AddU16(file, 1);
    AddU8(file, (unsigned)picture.width & 0xff);
    AddU8(file, (unsigned)picture.height & 0xff);
    AddU8(file, bits < 8 ? 1u << bits : 0);
    AddU8(file, 0);
    AddU16(file, word1);
    AddU16(file, word2);
    AddU32(file, (uint32_t)image.size());
    AddU32(file, 22);
    AddBytes(file, image);
    return file;
}

Bytes MakeIcoFile(const Picture &picture, int bits)
{
    return MakeIconFile(1, picture, bits, 1, (unsigned)bits, MakeIconImage(picture, bits));
}

Bytes MakeCurFile(const Picture &picture, int hotX, int hotY)
{
    Bytes image = MakeCursorImage(picture, hotX, hotY);
    image.erase(image.begin(), image.begin() + 4);
    return MakeIconFile(2, picture, 1, (unsigned)hotX, (unsigned)hotY, image);
}
