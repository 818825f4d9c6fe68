#include "platform/codec/codec.h"
#include "samples/builder/builder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

#define SIDE 5

static const char testFile[] = BUILD_FOLDER "/tests/codec_test.png";

enum { Gray = 0, Rgb = 2, Palette = 3, GrayAlpha = 4, RgbAlpha = 6 };

struct PngCase {
    int depth;
    int colorType;
    bool clearColor; // with a chunk that makes a colour clear
};

static int ChannelsOf(int colorType)
{
    return colorType == Rgb ? 3 : colorType == GrayAlpha ? 2 : colorType == RgbAlpha ? 4 : 1;
}

// A sample of the test picture; 16-bit ones have two equal bytes, so that no rounding is at play.
static unsigned SampleAt(const PngCase &png, int x, int y, int channel)
{
    unsigned value = (unsigned)(x * 3 + y * 17 + channel * 41 + 1);
    return png.depth == 16 ? (value & 0xff) * 257 : value & ((1u << png.depth) - 1);
}

static unsigned PaletteColor(unsigned index)
{
    return 0x102030 + index * 0x010001;
}

static void AddPass(Bytes &rows, const PngCase &png, int left, int top, int stepX, int stepY)
{
    for (int y = top; y < SIDE && left < SIDE; y += stepY) {
        AddU8(rows, 0);
        unsigned pending = 0;
        int filled = 0;
        for (int x = left; x < SIDE; x += stepX)
            for (int channel = 0; channel < ChannelsOf(png.colorType); channel++) {
                unsigned sample = SampleAt(png, x, y, channel);
                if (png.depth == 16)
                    AddU8(rows, sample >> 8);
                pending = pending << png.depth | sample;
                filled += png.depth;
                if (filled >= 8) {
                    AddU8(rows, pending & 0xff);
                    pending = 0;
                    filled = 0;
                }
            }
        if (filled)
            AddU8(rows, pending << (8 - filled));
    }
}

static Bytes MakeTestPng(const PngCase &png, bool interlaced)
{
    static const int passes[][4] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                    {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    Bytes rows;
    if (interlaced)
        for (const int *pass : passes)
            AddPass(rows, png, pass[0], pass[1], pass[2], pass[3]);
    else
        AddPass(rows, png, 0, 0, 1, 1);
    Bytes chunks;
    if (png.colorType == Palette) {
        Bytes colors;
        for (unsigned i = 0; i < 1u << png.depth; i++)
            for (int shift : {16, 8, 0})
                AddU8(colors, PaletteColor(i) >> shift & 0xff);
        chunks = MakePngChunk("PLTE", colors);
    }
    if (png.clearColor) {
        // the colour of the pixel (1, 0); in a palette, the alpha of the first two entries
        Bytes clear;
        for (int channel = 0; png.colorType != Palette && channel < ChannelsOf(png.colorType);
             channel++) {
            AddU8(clear, SampleAt(png, 1, 0, channel) >> 8);
            AddU8(clear, SampleAt(png, 1, 0, channel) & 0xff);
        }
        if (png.colorType == Palette)
            clear = {0x40, 0x80};
        AddBytes(chunks, MakePngChunk("tRNS", clear));
    }
    return MakePngOf(SIDE, SIDE, png.depth, png.colorType, interlaced, rows, chunks);
}

static unsigned ScaledSample(const PngCase &png, int x, int y, int channel)
{
    return SampleAt(png, x, y, channel) * 255 / ((1u << png.depth) - 1);
}

// The pixel that is due, 0xAARRGGBB.
static uint32_t PixelDue(const PngCase &png, int x, int y)
{
    if (png.colorType == Palette) {
        unsigned index = SampleAt(png, x, y, 0);
        unsigned alpha = png.clearColor && index < 2 ? (index + 1) * 0x40 : 0xff;
        return alpha << 24 | PaletteColor(index);
    }
    bool isGray = png.colorType == Gray || png.colorType == GrayAlpha;
    int channels = ChannelsOf(png.colorType);
    uint32_t pixel = 0xff;
    if (channels % 2 == 0)
        pixel = ScaledSample(png, x, y, channels - 1);
    bool isClear = png.clearColor;
    for (int channel = 0; channel < (isGray ? 1 : 3); channel++)
        isClear = isClear && SampleAt(png, x, y, channel) == SampleAt(png, 1, 0, channel);
    if (isClear)
        pixel = 0;
    for (int channel = 0; channel < 3; channel++)
        pixel = pixel << 8 | ScaledSample(png, x, y, isGray ? 0 : channel);
    return pixel;
}

static HGLOBAL Decode(const Bytes &file)
{
    EXPECT_TRUE(WriteBytes(testFile, file));
    HGLOBAL block = PNGReadGraphicFile(testFile);
    remove(testFile);
    return block;
}

TEST(Codec, DecodesEveryKindOfPngToBottomUpPixelsWithAlpha)
{
    static const PngCase cases[] = {
        {1, Gray, false},      {2, Gray, false},      {4, Gray, false},       {8, Gray, false},
        {16, Gray, false},     {8, Gray, true},       {8, Rgb, false},        {8, Rgb, true},
        {16, Rgb, false},      {1, Palette, false},   {2, Palette, true},     {4, Palette, false},
        {8, Palette, true},    {8, GrayAlpha, false}, {16, GrayAlpha, false}, {8, RgbAlpha, false},
        {16, RgbAlpha, false},
    };
    for (const PngCase &png : cases)
        for (bool interlaced : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << "depth " << png.depth << " type " << png.colorType << " clear "
                         << png.clearColor << " interlaced " << interlaced);
            HGLOBAL block = Decode(MakeTestPng(png, interlaced));
            ASSERT_NE(block, nullptr);
            ASSERT_EQ(GlobalSize(block), sizeof(BITMAPINFOHEADER) + SIDE * SIDE * 4);
            const BYTE *bytes = (const BYTE *)GlobalLock(block);
            BITMAPINFOHEADER header;
            memcpy(&header, bytes, sizeof header);
            EXPECT_EQ(header.biSize, 40u);
            EXPECT_EQ(header.biWidth, SIDE);
            EXPECT_EQ(header.biHeight, SIDE);
            EXPECT_EQ(header.biBitCount, 32);
            EXPECT_EQ(header.biCompression, (DWORD)BI_RGB);
            for (int i = 0; i < SIDE * SIDE; i++) {
                uint32_t pixel;
                memcpy(&pixel, bytes + sizeof header + i * 4, 4);
                EXPECT_EQ(pixel, PixelDue(png, i % SIDE, SIDE - 1 - i / SIDE)) << "pixel " << i;
            }
            GlobalUnlock(block);
            GlobalFree(block);
        }
}

TEST(Codec, GivesNothingForAFileThatIsNoWholePng)
{
    EXPECT_EQ(PNGReadGraphicFile(BUILD_FOLDER "/no such folder/picture.png"), nullptr);
    EXPECT_EQ(Decode({}), nullptr);
    EXPECT_EQ(Decode(MakeBmpFile(MakeDib(MakePicture(2, 2, 0xff000000), 24))), nullptr);

    Bytes whole = MakePng(MakePicture(3, 3, 0xff112233));
    const size_t afterPixels = whole.size() - 12 - 8; // the last chunk; checks of the one before
    for (size_t length = 0; length < afterPixels; length++)
        EXPECT_EQ(Decode(Bytes(whole.begin(), whole.begin() + (ptrdiff_t)length)), nullptr)
            << length << " bytes";

    Bytes rows(SIDE * (SIDE * 4 + 1));
    EXPECT_EQ(Decode(MakePngOf(0, SIDE, 8, RgbAlpha, 0, rows)), nullptr);
    EXPECT_EQ(Decode(MakePngOf(SIDE, SIDE, 3, RgbAlpha, 0, rows)), nullptr);
    EXPECT_EQ(Decode(MakePngOf(SIDE, SIDE, 8, Palette, 0, rows)), nullptr);
    // 64,008,000 pixels, and so many that their count passes 32 bits
    EXPECT_EQ(Decode(MakePngOf(8001, 8000, 1, Gray, 0, Bytes(8000 * 1002))), nullptr);
    EXPECT_EQ(Decode(MakePngOf(0x7fffffff, 0x7fffffff, 8, RgbAlpha, 0, rows)), nullptr);
    EXPECT_EQ(Decode(MakePngOf(0x10000, 0x10001, 8, RgbAlpha, 0, rows)), nullptr);
}
