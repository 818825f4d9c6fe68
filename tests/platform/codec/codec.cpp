#include "platform/codec/codec.h"
#include "samples/builder/builder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

#define SIDE 2

static const char testFile[] = BUILD_FOLDER "/tests/codec_test.png";

enum { Gray = 0, Rgb = 2, Palette = 3, GrayAlpha = 4, RgbAlpha = 6 };

// A picture of 2 x 2 pixels: below 8 bits a pixel, each row is one byte.
struct PngCase {
    int depth;
    int colorType;
    Bytes rows[SIDE];
    std::vector<uint32_t> pixels; // that are due, 0xAARRGGBB from the top left
    Bytes clear = {};             // of the chunk that makes colours clear, if any
};

// Grays: a colour is 0x40 more than its index, as a byte.
static Bytes MakePalette(int depth)
{
    Bytes colors;
    for (unsigned i = 0; i < 1u << depth; i++)
        for (unsigned j = 0; j < 3; j++)
            AddU8(colors, (i + 0x40) & 0xff);
    return MakePngChunk("PLTE", colors);
}

static Bytes MakeTestPng(const PngCase &png, bool interlaced)
{
    Bytes scans;
    for (const Bytes &row : png.rows) {
        AddU8(scans, 0);
        AddBytes(scans, row);
    }
    const Bytes &top = png.rows[0];
    if (interlaced && top.size() > 1) // the top pixels are a pass each
        scans.insert(scans.begin() + 1 + (ptrdiff_t)top.size() / 2, 0);
    else if (interlaced)
        scans.insert(scans.begin() + 2, {0, (BYTE)(top[0] << png.depth)});
    Bytes chunks = png.colorType == Palette ? MakePalette(png.depth) : Bytes();
    if (!png.clear.empty())
        AddBytes(chunks, MakePngChunk("tRNS", png.clear));
    return MakePngOf(SIDE, SIDE, png.depth, png.colorType, interlaced, scans, chunks);
}

// A block's bytes; empty for none.
static Bytes Take(HGLOBAL block)
{
    if (block == nullptr)
        return {};
    const BYTE *bytes = (const BYTE *)GlobalLock(block);
    const Bytes taken(bytes, bytes + GlobalSize(block));
    GlobalUnlock(block);
    GlobalFree(block);
    return taken;
}

static Bytes Decode(const Bytes &file)
{
    EXPECT_TRUE(WriteBytes(testFile, file));
    const Bytes dib = Take(PNGReadGraphicFile(testFile));
    remove(testFile);
    return dib;
}

TEST(Codec, DecodesEveryKindOfPngToBottomUpPixelsWithAlpha)
{
    static const PngCase cases[] = {
        {1, Gray, {{0x40}, {0x80}}, {0xff000000, 0xffffffff, 0xffffffff, 0xff000000}},
        {2, Gray, {{0x10}, {0xb0}}, {0xff000000, 0xff555555, 0xffaaaaaa, 0xffffffff}},
        {4, Gray, {{0x01}, {0x2f}}, {0xff000000, 0xff111111, 0xff222222, 0xffffffff}},
        {8, Gray, {{0, 1}, {2, 255}}, {0xff000000, 0xff010101, 0xff020202, 0xffffffff}},
        {8, Gray, {{5, 6}, {6, 7}}, {0xff050505, 0x00060606, 0x00060606, 0xff070707}, {0, 6}},
        {16, Gray, {{1, 1, 2, 2}, {3, 3, 4, 4}}, {0xff010101, 0xff020202, 0xff030303, 0xff040404}},
        {8,
         Rgb,
         {{1, 2, 3, 4, 5, 6}, {7, 8, 9, 255, 0, 0}},
         {0xff010203, 0xff040506, 0xff070809, 0xffff0000}},
        {8,
         Rgb,
         {{1, 2, 3, 4, 5, 6}, {4, 5, 7, 4, 5, 6}},
         {0xff010203, 0x00040506, 0xff040507, 0x00040506},
         {0, 4, 0, 5, 0, 6}},
        {1, Palette, {{0x40}, {0xc0}}, {0xff404040, 0xff414141, 0xff414141, 0xff414141}},
        {2, Palette, {{0x10}, {0xb0}}, {0x40404040, 0x80414141, 0xff424242, 0xff434343}, {64, 128}},
        {4, Palette, {{0x01}, {0x2f}}, {0xff404040, 0xff414141, 0xff424242, 0xff4f4f4f}},
        {8, Palette, {{0, 1}, {2, 9}}, {0x40404040, 0x80414141, 0xff424242, 0xff494949}, {64, 128}},
        {8,
         GrayAlpha,
         {{1, 2, 3, 4}, {5, 0, 7, 255}},
         {0x02010101, 0x04030303, 0x00050505, 0xff070707}},
        {8,
         RgbAlpha,
         {{1, 2, 3, 4, 5, 6, 7, 8}, {9, 8, 7, 0, 6, 5, 4, 255}},
         {0x04010203, 0x08050607, 0x00090807, 0xff060504}},
        {16,
         RgbAlpha,
         {{1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7, 8, 8},
          {9, 9, 8, 8, 7, 7, 0, 0, 6, 6, 5, 5, 4, 4, 255, 255}},
         {0x04010203, 0x08050607, 0x00090807, 0xff060504}},
    };
    for (const PngCase &png : cases)
        for (bool interlaced : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << "depth " << png.depth << " type " << png.colorType << " clear "
                         << png.clear.size() << " interlaced " << interlaced);
            Picture picture = MakePicture(SIDE, SIDE, 0);
            picture.pixels = png.pixels;
            EXPECT_EQ(Decode(MakeTestPng(png, interlaced)), MakeDib(picture, 32));
        }
}

TEST(Codec, TakesAFileWhoseRowsAreWhole)
{
    const Bytes whole = MakePng(MakePicture(3, 3, 0xff112233)), pixels = Decode(whole);
    const size_t afterRows = whole.size() - 12 - 8; // the last chunk; checks of the one before
    for (size_t length = 0; length < whole.size(); length++)
        EXPECT_EQ(Decode(Bytes(whole.begin(), whole.begin() + (ptrdiff_t)length)),
                  length < afterRows ? Bytes() : pixels)
            << length << " bytes";
    for (size_t at = afterRows; at < whole.size(); at++) {
        Bytes damaged = whole;
        damaged[at] ^= 0x55;
        EXPECT_EQ(Decode(damaged), pixels) << "byte " << at;
    }
}

TEST(Codec, GivesNothingForAFileThatIsNoPng)
{
    EXPECT_EQ(PNGReadGraphicFile(BUILD_FOLDER "/no such folder/picture.png"), nullptr);
    EXPECT_EQ(Decode({}), Bytes());
    EXPECT_EQ(Decode(MakeBmpFile(MakeDib(MakePicture(2, 2, 0xff000000), 24))), Bytes());

    Bytes rows(SIDE * (SIDE * 4 + 1));
    EXPECT_EQ(Decode(MakePngOf(0, SIDE, 8, RgbAlpha, 0, rows)), Bytes());
    EXPECT_EQ(Decode(MakePngOf(SIDE, SIDE, 3, RgbAlpha, 0, rows)), Bytes());
    EXPECT_EQ(Decode(MakePngOf(SIDE, SIDE, 8, Palette, 0, rows)), Bytes());
    // a row too many, and so many pixels that their count passes 32 bits
    for (const int height : {4000, 4001})
        EXPECT_EQ(
            Decode(MakePngOf(4000, (DWORD)height, 1, Gray, 0, Bytes((size_t)height * 501))).size(),
            height == 4000 ? 40 + 64000000u : 0);
    EXPECT_EQ(Decode(MakePngOf(0x7fffffff, 0x7fffffff, 8, RgbAlpha, 0, rows)), Bytes());
}

static HGLOBAL BlockOf(const Bytes &bytes)
{
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    memcpy(GlobalLock(block), bytes.data(), bytes.size());
    GlobalUnlock(block);
    return block;
}

static int Write(const Bytes &dib, const char *path = testFile)
{
    HGLOBAL block = BlockOf(dib);
    const int answer = PNGWriteGraphicFile(path, block);
    GlobalFree(block);
    return answer;
}

TEST(Codec, WritesWhatItReadsAndTellsOfIt)
{
    Picture picture = MakePicture(3, 2, 0xff102030);
    picture.At(1, 0) = 0xffff0000;
    for (int bits : {24, 32}) {
        picture.At(2, 1) = bits == 32 ? 0x00445566u : 0xff445566u;
        ASSERT_EQ(Write(MakeDib(picture, bits)), 1);
        EXPECT_EQ(Take(PNGReadGraphicFile(testFile)), MakeDib(picture, 32));
        const Bytes told = Take(PNGGetFileInformation(testFile));
        ASSERT_EQ(told.size(), 40u);
        EXPECT_EQ(GetU32(told, 4), 3u);
        EXPECT_EQ(GetU32(told, 8), 2u);
        EXPECT_EQ(GetU16(told, 14), (unsigned)bits);
    }
    EXPECT_TRUE(WriteBytes(testFile, MakePngOf(7, 9, 16, GrayAlpha, 1, {})));
    EXPECT_EQ(GetU16(Take(PNGGetFileInformation(testFile)), 14), 32u);
    EXPECT_TRUE(WriteBytes(testFile, MakePngOf(7, 9, 16, Palette, 1, {})));
    EXPECT_EQ(PNGGetFileInformation(testFile), nullptr);
    remove(testFile);
    EXPECT_EQ(PNGGetFileInformation(testFile), nullptr);

    Bytes cut = MakeDib(picture, 32);
    cut.pop_back();
    EXPECT_EQ(Write(cut), 0);
    for (DibForm form : {DibForm::TopDown, DibForm::BitFields, DibForm::Core})
        EXPECT_EQ(Write(MakeDib(picture, form == DibForm::Core ? 24 : 32, form)), 0);
    EXPECT_EQ(Write(MakeDib(picture, 8)), 0);
    EXPECT_EQ(Take(PNGReadGraphicFile(testFile)), Bytes()); // nothing was written
    EXPECT_EQ(Write(MakeDib(picture, 32), BUILD_FOLDER "/no such folder/picture.png"), 0);
    EXPECT_EQ(PNGWriteGraphicFile(testFile, nullptr), 0);
}
