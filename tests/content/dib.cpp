#include "content/dib.h"

#include "tests/support/dib_kinds.h"

#include <gtest/gtest.h>

#include <climits>

// Red, green, blue and white in two rows of an odd width, so that rows are padded.
static Picture Colors()
{
    Picture picture = MakePicture(9, 2, 0xFFFFFFFF);
    picture.At(0, 0) = 0xFFFF0000;
    picture.At(8, 0) = 0xFF00FF00;
    picture.At(1, 1) = 0xFF0000FF;
    return picture;
}

// A block that is locked, and freed at its end.
struct Locked {
    HGLOBAL block;
    BYTE *bytes;

    explicit Locked(HGLOBAL handle) : block(handle), bytes((BYTE *)GlobalLock(handle))
    {
    }
    ~Locked()
    {
        GlobalUnlock(block);
        GlobalFree(block);
    }
};

TEST(Dib, WritesOnePixelAndKeepsItsNeighbours)
{
    const struct {
        WORD bits;
        DWORD value, stored;
    } cases[] = {
        {1, 2, 1},
        {4, 0x1F, 0xF},
        {8, 0x123, 0x23},
        {24, 0x12345678, 0xFF345678},
        {32, 0x12345678, 0x12345678},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.bits);
        const Locked block(CreateDib(10, 3, nullptr, c.bits));
        void *dib = block.bytes;
        const DWORD black = GetDibPixel(dib, 0, 0);
        for (LONG x : {4, 5}) {
            SetDibPixel(dib, x, 1, c.value);
            EXPECT_EQ(GetDibPixel(dib, x, 1), c.stored);
            SetDibPixel(dib, x, 1, 0);
            EXPECT_EQ(GetDibPixel(dib, x, 1), black);
            SetDibPixel(dib, x, 1, c.value);
        }
        SetDibPixel(dib, 10, 1, c.value);
        SetDibPixel(dib, 0, -1, c.value);
        int written = 0;
        for (LONG y = 0; y < 3; y++)
            for (LONG x = 0; x < 10; x++)
                written += GetDibPixel(dib, x, y) != black;
        EXPECT_EQ(written, 2);
    }
}

TEST(Dib, CreatesAWholeBlockOrNone)
{
    const BYTE palette[] = {1, 2, 3, 4, 5, 6};
    const Locked block(CreateDib(33, 2, palette, 1));
    const Bytes dib(block.bytes, block.bytes + 40 + 8 + 16);
    EXPECT_EQ(GetU32(dib, 20), 16u); // bytes of pixels
    EXPECT_EQ(GetU32(dib, 32), 2u);  // colours
    EXPECT_EQ(Bytes(dib.begin() + 40, dib.begin() + 48), (Bytes{3, 2, 1, 0, 6, 5, 4, 0}));
    EXPECT_EQ(PictureFits(dib.data(), (DWORD)dib.size(), 0), 1);
    for (auto [width, height] :
         {std::pair(0, 1), {1, 0}, {-5, 5}, {8000, 8001}, {INT_MAX, INT_MAX}})
        EXPECT_EQ(CreateDib(width, height, nullptr, 24), nullptr);
}

// A thousand rows of one bit take 8 MB. Runs of a few bytes are taken for less, unless the block
// holds as many as could fill the picture.
TEST(Dib, TheProofDrawsTheLineAt64MillionPixels)
{
    for (const auto &[bits, form, width, room, isFilled] :
         {std::tuple(1, DibForm::Plain, 64'000u, 8'001'000, false),
          {8, DibForm::RunLength, 16'000u, 0, false},
          {8, DibForm::RunLength, 16'000u, 2 * (16'001'000 / 255 + 1), true}}) {
        Bytes dib = MakeDib(MakePicture(1, 1, 0xFFFFFFFF), bits, form);
        dib.resize(dib.size() + (size_t)room);
        PutU32(dib, 8, 1000);
        for (const unsigned more : {0u, 1u}) {
            PutU32(dib, 4, width + more);
            EXPECT_EQ(PictureFits(dib.data(), (DWORD)dib.size(), 0), more == 0 || isFilled);
        }
    }
}

TEST(Dib, TheSystemIsToldOfWholeRunsThatEnd)
{
    const struct {
        const char *runs;
        int bits;
        Bytes bytes;
        uint32_t told; // bytes, in the header
        size_t whole;
    } cases[] = {
        {"a run and the end", 8, {9, 1, 0, 1, 9, 2}, 6, 2},
        {"no end", 8, {9, 1, 0, 0}, 4, 4},
        {"half a code at the end", 8, {9, 1, 0}, 3, 2},
        {"a literal run, padded", 8, {0, 3, 1, 2, 3, 0, 0, 1}, 8, 6},
        {"a literal run that leaves the block", 8, {9, 1, 0, 9, 1, 2, 3, 0, 1}, 9, 2},
        {"a literal run of nibbles", 4, {0, 5, 0x12, 0x34, 0x50, 0, 0, 1}, 8, 6},
        {"a move", 8, {0, 2, 1, 1, 0, 1}, 6, 4},
        {"a move without its bytes", 8, {0, 2, 1}, 3, 0},
        {"more told than the block holds", 8, {9, 1, 0, 1}, 5, 2},
        {"less told than there is", 8, {5, 1, 4, 1, 0, 1}, 2, 2},
        {"nothing told", 8, {5, 1, 4, 1, 0, 1}, 0, 4},
        {"nothing told and no end", 8, {5, 1}, 0, 2},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.runs);
        Bytes dib = MakeDib(Colors(), c.bits, DibForm::RunLength);
        const size_t start = 40 + (4u << c.bits);
        dib.resize(start);
        AddBytes(dib, c.bytes);
        PutU32(dib, 20, c.told);
        HGLOBAL copy;
        const BYTE *info = CopyDibInfo(dib.data(), (DWORD)dib.size(), &copy);
        Bytes expected(c.bytes.begin(), c.bytes.begin() + (ptrdiff_t)c.whole);
        expected.insert(expected.end(), {0, 1});
        EXPECT_EQ(Bytes(info + start, info + start + expected.size()), expected);
        EXPECT_EQ(GetU32(Bytes(info, info + 40), 20), expected.size());
        GlobalUnlock(copy);
        GlobalFree(copy);
    }
}
