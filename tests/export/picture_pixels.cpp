#include "export/picture_pixels.h"
#include "samples/builder/pictures.h"

#include <gtest/gtest.h>

// The pixels' values as the samples' pictures have them, 0xAARRGGBB.
static std::vector<uint32_t> ColorsOf(const PicturePixels &pixels)
{
    std::vector<uint32_t> colors;
    for (const DWORD value : pixels.values)
        colors.push_back((value & 0xFF00FF00) | (value & 0xFF) << 16 | (value >> 16 & 0xFF));
    return colors;
}

static PicturePixels PixelsOf(const Picture &picture)
{
    PicturePixels pixels = {picture.width, picture.height, {}};
    for (const uint32_t color : picture.pixels)
        pixels.values.push_back((color & 0xFF00FF00) | (color & 0xFF) << 16 | (color >> 16 & 0xFF));
    return pixels;
}

TEST(PicturePixels, OfBitmapsAreThoseOfEveryForm)
{
    Picture picture = MakePicture(9, 3, 0xFF000000);
    picture.At(0, 0) = 0xFFFFFFFF;
    picture.At(8, 2) = 0xFF0000FF;
    Picture clear = picture;
    clear.At(4, 1) = 0x80FF0000;
    const struct {
        const Picture *picture;
        int bits;
        DibForm form;
    } cases[] = {
        {&picture, 4, DibForm::Plain},      {&picture, 8, DibForm::Core},
        {&picture, 16, DibForm::Plain},     {&picture, 24, DibForm::TopDown},
        {&picture, 8, DibForm::TopDown},    {&picture, 4, DibForm::RunLength},
        {&picture, 8, DibForm::RunLength},  {&picture, 16, DibForm::BitFields},
        {&picture, 32, DibForm::BitFields}, {&clear, 32, DibForm::Plain},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(std::to_string(row.bits) + " " + std::to_string((int)row.form));
        const Bytes dib = MakeDib(*row.picture, row.bits, row.form);
        PicturePixels pixels;
        ASSERT_TRUE(ReadBitmapPixels(dib.data(), (DWORD)dib.size(), &pixels));
        EXPECT_EQ(ColorsOf(pixels), row.picture->pixels);
    }

    // Runs that skip, end early or leave the picture; what they do not reach is black.
    Bytes runs = MakeDib(MakePicture(3, 2, 0xFFFFFFFF), 8, DibForm::RunLength, {0xFFFFFF, 0xFF});
    runs.resize(40 + 4 * 256);
    AddBytes(runs, {0, 2, 1, 0, 9, 0, 0, 0, 0, 3, 1, 0, 1, 0, 0, 0, 9, 9});
    PicturePixels pixels;
    ASSERT_TRUE(ReadBitmapPixels(runs.data(), (DWORD)runs.size(), &pixels));
    EXPECT_EQ(ColorsOf(pixels), (std::vector<uint32_t>{0xFF0000FF, 0xFFFFFFFF, 0xFF0000FF,
                                                       0xFF000000, 0xFFFFFFFF, 0xFFFFFFFF}));
}

TEST(PicturePixels, OfOld32BitIconsWithoutAlphaTakeTheMask)
{
    const Picture picture = MakePicture(2, 1, 0x00123456);
    Bytes icon = MakeIconImage(picture, 32);
    PicturePixels pixels;
    icon.resize(40 + 8); // without the mask, which it need not have
    ASSERT_TRUE(ReadIconPixels(icon.data(), (DWORD)icon.size(), &pixels));
    EXPECT_EQ(ColorsOf(pixels), (std::vector<uint32_t>{0xFF123456, 0xFF123456}));
    AddU32(icon, 0x40);
    ASSERT_TRUE(ReadIconPixels(icon.data(), (DWORD)icon.size(), &pixels));
    EXPECT_EQ(ColorsOf(pixels), (std::vector<uint32_t>{0xFF123456, 0}));
}

TEST(PicturePixels, AreShrunkByAreaWithColorsWeighedByAlpha)
{
    const struct {
        Picture picture;
        LONG side;
        Picture shrunk;
    } cases[] = {
        {{2, 1, {0xFF000000, 0xFF0000FF}}, 2, {2, 1, {0xFF000000, 0xFF0000FF}}},
        {{1, 1, {0x80FFFFFF}}, 64, {1, 1, {0x80FFFFFF}}},
        {{2, 2, {0xFF102030, 0xFF304050, 0xFF102030, 0xFF304050}}, 1, {1, 1, {0xFF203040}}},
        // What is clear has no colour that counts.
        {{2, 1, {0xFFFF0000, 0x0000FF00}}, 1, {1, 1, {0x80FF0000}}},
        // The middle one belongs to both.
        {{3, 1, {0xFF000000, 0xFF000060, 0xFF0000C0}}, 2, {2, 1, {0xFF000020, 0xFF0000A0}}},
        {{4, 1, {0xFF000001, 0xFF000003, 0xFF000005, 0xFF000007}},
         2,
         {2, 1, {0xFF000002, 0xFF000006}}},
        {{1, 3, {0, 0, 0}}, 1, {1, 1, {0}}},
    };
    for (const auto &row : cases) {
        PicturePixels pixels = PixelsOf(row.picture);
        ShrinkPixels(&pixels, row.side);
        EXPECT_EQ(pixels.width, row.shrunk.width);
        EXPECT_EQ(pixels.height, row.shrunk.height);
        EXPECT_EQ(ColorsOf(pixels), row.shrunk.pixels);
    }
}
