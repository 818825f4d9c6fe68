#include "tests/support/canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

using Bytes = std::vector<BYTE>;

struct DibCase {
    const char *name;
    BITMAPINFOHEADER header;
    std::vector<DWORD> after; // masks and colour table, as they stand after 40 bytes
    Bytes pixels;
    const char *picture; // NULL: no bitmap is made
};

static BITMAPINFOHEADER Header(int width, int height, int bits, DWORD compression = BI_RGB,
                               DWORD used = 0, DWORD imageSize = 0, DWORD headerSize = 40)
{
    return {headerSize, width, height, 1, (WORD)bits, compression, imageSize, 0, 0, used, 0};
}

// Draws the picture at the top left. info is exactly as long as the picture needs.
static bool Draw(const Canvas &canvas, const void *info, const void *pixels)
{
    HBITMAP bitmap = CreateDIBitmap(canvas.dc, (const BITMAPINFOHEADER *)info, CBM_INIT, pixels,
                                    (const BITMAPINFO *)info, DIB_RGB_COLORS);
    HDC memory = CreateCompatibleDC(canvas.dc);
    SelectObject(memory, bitmap);
    if (bitmap != nullptr)
        BitBlt(canvas.dc, 0, 0, canvas.width, canvas.height, memory, 0, 0, SRCCOPY);
    DeleteDC(memory);
    DeleteObject(bitmap);
    return bitmap != nullptr;
}

// The picture on a yellow canvas of 6 x 3.
static std::string Drawn(const Bytes &info, const Bytes &pixels)
{
    const Canvas canvas(6, 3, RGB(255, 255, 0));
    return Draw(canvas, info.data(), pixels.data()) ? canvas.Picture() : "none";
}

// A header and what stands after it.
static Bytes Info(const BITMAPINFOHEADER &header, const std::vector<DWORD> &after)
{
    Bytes info(sizeof header + after.size() * 4);
    memcpy(info.data(), &header, sizeof header);
    std::copy_n((const BYTE *)after.data(), after.size() * 4, info.data() + sizeof header);
    return info;
}

static const DWORD R = 0xFF0000, G = 0x00FF00, B = 0x0000FF, W = 0xFFFFFF;

static const std::vector<DWORD> longTable = [] {
    std::vector<DWORD> table(258, G);
    return table[1] = R, table;
}();

static const Bytes longRuns = [] {
    Bytes runs(100, 1);
    return runs[0] = 3, runs[2] = 0, runs;
}();

static const DibCase dibCases[] = {
    DibCase("1 bit", Header(6, 3, 1), {R, B}, {0xA8, 0, 0, 0, 0x54, 0, 0, 0, 0xFC, 0, 0, 0},
            "BBBBBB\nRBRBRB\nBRBRBR\n"),
    DibCase("1 bit, a table of one, from the top", Header(3, -2, 1, BI_RGB, 1), {R},
            {0x40, 0, 0, 0, 0xA0, 0, 0, 0}, "R#RYYY\n#R#YYY\nYYYYYY\n"),
    DibCase("4 bits, short table", Header(3, 1, 4, BI_RGB, 2), {R, B}, {0x01, 0x50, 0, 0},
            "RB#YYY\nYYYYYY\nYYYYYY\n"),
    DibCase("8 bits, long table", Header(2, -2, 8, BI_RGB, 258), longTable,
            {0, 1, 0, 0, 1, 255, 0, 0}, "GRYYYY\nRGYYYY\nYYYYYY\n"),
    DibCase("24 bits", Header(2, 2, 24), {},
            {0, 0, 255, 0, 255, 0, 9, 9, 255, 0, 0, 255, 255, 255, 9, 9},
            "B.YYYY\nRGYYYY\nYYYYYY\n"),
    DibCase("24 bits with a table", Header(1, 1, 24, BI_RGB, 1), {W}, {255, 0, 0, 9},
            "BYYYYY\nYYYYYY\nYYYYYY\n"),
    DibCase("32 bits, any high byte", Header(2, -1, 32), {}, {0, 0, 255, 77, 255, 0, 0, 255},
            "RBYYYY\nYYYYYY\nYYYYYY\n"),
    DibCase("32 bits, masks", Header(2, 1, 32, BI_BITFIELDS), {0xFF000000, 0xFF00, 0xFF0000},
            {9, 0, 0, 255, 9, 0, 255, 0}, "RBYYYY\nYYYYYY\nYYYYYY\n"),
    DibCase("16 bits", Header(4, 1, 16), {}, {0x00, 0x7C, 0xE0, 0x03, 0x1F, 0x80, 0xFF, 0x7F},
            "RGB.YY\nYYYYYY\nYYYYYY\n"),
    DibCase("16 bits, masks", Header(3, 1, 16, BI_BITFIELDS), {0xF800, 0x07E0, 0x001F},
            {0x00, 0xF8, 0xE0, 0x07, 0x1F, 0x00, 0, 0}, "RGBYYY\nYYYYYY\nYYYYYY\n"),
    DibCase("8-bit runs", Header(6, 3, 8, BI_RLE8, 4, 24), {R, G, B, W},
            {2, 1, 0, 2, 1, 1, 2, 2, 0, 0, 0, 3, 3, 2, 1, 0, 9, 0, 0, 1, 0, 0, 0, 0},
            ".BGRRR\n###BB#\nGG####\n"),
    DibCase("runs past the edge", Header(6, 3, 8, BI_RLE8, 4, 14), {R, G, B, W},
            {10, 1, 2, 2, 0, 0, 3, 3, 0, 0, 6, 2, 0, 1}, "BBBBBB\n...###\nGGGGGG\n"),
    DibCase("runs that the size cuts", Header(6, 3, 8, BI_RLE8, 4, 4), {R, G, B, W},
            {3, 1, 0, 0, 3, 2}, "######\n######\nGGG###\n"),
    DibCase("4-bit runs", Header(6, 3, 4, BI_RLE4, 4, 18), {R, G, B, W},
            {5, 0x12, 0, 0, 0, 6, 0x12, 0x30, 0x13, 0, 0, 0, 1, 0x30, 0, 1},
            ".#####\nGB.RG.\nGBGBG#\n"),
    DibCase("runs that skip past the edge", Header(6, 3, 8, BI_RLE8, 4, 12), {R, G, B, W},
            {0, 2, 9, 0, 2, 1, 0, 0, 3, 2, 0, 1}, "######\nBBB###\n######\n"),
    DibCase("runs that skip past the top", Header(6, 3, 8, BI_RLE8, 4, 10), {R, G, B, W},
            {2, 1, 0, 2, 1, 9, 3, 2, 0, 1}, "######\n######\nGG####\n"),
    DibCase("a skip that the size cuts", Header(6, 3, 8, BI_RLE8, 4, 5), {R, G, B, W},
            {2, 1, 0, 2, 1, 1}, "######\n######\nGG####\n"),
    DibCase("indexes past the edge, then a padded one", Header(6, 3, 8, BI_RLE8, 4, 20),
            {R, G, B, W}, {0, 8, 1, 2, 1, 2, 1, 2, 1, 2, 0, 0, 0, 3, 1, 9, 3, 1, 0, 1},
            "######\nG#.###\nGBGBGB\n"),
    DibCase("more rows than there are", Header(6, 3, 4, BI_RLE4, 4, 18), {R, G, B, W},
            {1, 0x1F, 0, 0, 1, 0x20, 0, 0, 1, 0xF0, 0, 0, 1, 0x10, 0, 0, 0, 1},
            "######\nB#####\nG#####\n"),
    DibCase("runs with a size past their end", Header(6, 3, 8, BI_RLE8, 4, 100), {R, G, B, W},
            longRuns, "######\n######\nGGG###\n"),
    DibCase("runs without a size", Header(6, 3, 8, BI_RLE8, 4, 0), {R, G, B, W}, {6, 1, 0, 1},
            nullptr),
    DibCase("runs from the top", Header(6, -3, 8, BI_RLE8, 4, 4), {R, G, B, W}, {6, 1, 0, 1},
            nullptr),
    DibCase("the least height", Header(1, INT_MIN, 24), {}, {0, 0, 0, 0}, nullptr),
};

TEST(DibBitmap, EveryLayoutThatWindowsDraws)
{
    for (const DibCase &dib : dibCases)
        EXPECT_EQ(Drawn(Info(dib.header, dib.after), dib.pixels),
                  dib.picture == nullptr ? "none" : dib.picture)
            << dib.name;
}

TEST(DibBitmap, LongerHeadersHoldTheirMasks)
{
    for (DWORD size : {56u, 108u, 124u}) {
        Bytes info = Info(Header(2, 1, 32, BI_BITFIELDS, 0, 0, size), {0xFF, 0xFF00, 0xFF0000});
        info.resize(size);
        EXPECT_EQ(Drawn(info, {255, 0, 0, 0, 0, 0, 255, 0}), "RBYYYY\nYYYYYY\nYYYYYY\n") << size;
    }
}
