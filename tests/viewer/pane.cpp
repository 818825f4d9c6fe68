// The display pane's drawings: pictures by their pixels, text by the lines that were written.
#include "viewer/pane.h"

#include "content/block.h"
#include "exe/catalog.h"
#include "samples/builder/builder.h"
#include "tests/support/canvas.h"
#include "tests/support/dib_kinds.h"
#include "tests/support/drive.h"
#include "viewer/dib_draw.h"
#include "viewer/png.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#define PANE_WIDTH 300
#define PANE_HEIGHT 200

typedef std::vector<std::string> Texts;

struct PaneTest : testing::Test {
    ResourceCatalog catalog = {};

    void TearDown() override
    {
        ReleaseCatalog(&catalog);
    }

    // Makes the data the catalogue's only entry. What lies behind its size in the block is 0xFF.
    void Hold(DWORD category, const Bytes &data)
    {
        ReleaseCatalog(&catalog);
        ResourceEntry entry = {};
        entry.category = category;
        entry.size = (DWORD)data.size();
        std::copy(data.begin(), data.end(), (BYTE *)AllocateLocked(entry.size, &entry.data));
        GlobalUnlock(entry.data);
        ASSERT_EQ(AppendEntry(&catalog, &entry), 1);
    }

    int Paint(HDC dc, int width, int height)
    {
        const RECT rect = {0, 0, width, height};
        return PaintResource(dc, &rect, catalog.entries, catalog.count, 0);
    }

    Pixels Painted(int width = PANE_WIDTH, int height = PANE_HEIGHT)
    {
        return DrawOnWhite(width, height, [&](HDC dc) { Paint(dc, width, height); });
    }

    std::vector<DrawnText> Lines(int width = PANE_WIDTH, int height = PANE_HEIGHT)
    {
        return RecordText(width, height, [&](HDC dc) { Paint(dc, width, height); });
    }

    // The information line, which must be the only text and lie in the band below `bottom`.
    std::string InformationLine(int bottom, int width = PANE_WIDTH, int height = PANE_HEIGHT)
    {
        const std::vector<DrawnText> lines = Lines(width, height);
        EXPECT_EQ(lines.size(), 1u);
        if (lines.size() != 1)
            return "";
        EXPECT_GE(lines[0].y, bottom + 8);
        EXPECT_LE(lines[0].y + 13, bottom + 40);
        return lines[0].text;
    }

    // Whether the pane shows the picture at (x, y), and white around it down to y + height.
    void ExpectPicture(const Picture &picture, int x, int y)
    {
        const Pixels pixels = Painted();
        for (int row = 0; row < y + picture.height; row++)
            for (int column = 0; column < PANE_WIDTH; column++) {
                const bool inside = row >= y && column >= x && column < x + picture.width;
                const uint32_t expected =
                    inside ? picture.At(column - x, row - y) & 0xFFFFFF : 0xFFFFFF;
                ASSERT_EQ(pixels.At(column, row), expected) << column << ", " << row;
            }
    }
};

// Colours that every bit count holds exactly.
static Picture Pattern(int width, int height)
{
    static const uint32_t colors[] = {0xFF000000, 0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFF00};
    Picture picture = MakePicture(width, height, 0);
    for (int y = 0; y < height; y++)
        for (int x = 0; x < width; x++)
            picture.At(x, y) = colors[(x + 2 * y) % 5];
    return picture;
}

static Picture TwoColors(int width, int height)
{
    Picture picture = Pattern(width, height);
    for (uint32_t &pixel : picture.pixels)
        pixel = pixel == 0xFF000000 ? 0xFF000000 : 0xFF00FF00;
    return picture;
}

TEST_F(PaneTest, DrawsEveryKindOfBitmapCentred)
{
    for (const auto &c : dibKinds) {
        SCOPED_TRACE(std::to_string(c.bits) + " bits, form " + std::to_string((int)c.form));
        const Picture picture = c.bits == 1 ? TwoColors(101, 51) : Pattern(101, 51);
        Bytes dib = MakeDib(picture, c.bits, c.form);
        if (c.form == DibForm::RunLength)
            dib.resize(dib.size() - 2);            // the end mark
        dib[c.form == DibForm::Core ? 8 : 12] = 0; // planes, which are not read
        Hold(CategoryBitmap, dib);
        ExpectPicture(picture, 99, 74);
        EXPECT_EQ(InformationLine(74 + 51), "101 X 51, " + std::to_string(c.bits) + " bits");
    }
}

TEST_F(PaneTest, DrawsAPictureLargerThanThePaneFromItsCorner)
{
    const Picture picture = Pattern(500, 400);
    Hold(CategoryBitmap, MakeDib(picture, 24));
    const Pixels pixels = Painted();
    for (auto [x, y] : {std::pair(0, 0), {299, 0}, {0, 199}, {299, 199}})
        EXPECT_EQ(pixels.At(x, y), picture.At(x, y) & 0xFFFFFF);
}

TEST_F(PaneTest, DrawsIconsThroughTheirMask)
{
    // Behind the opaque pixels, red and blue, the pane is seen.
    Picture picture = MakePicture(32, 32, 0xFFFF0000);
    for (int i = 0; i < 32; i++) {
        picture.At(i, 0) = 0xFF0000FF;
        picture.At(i, i) = 0;
    }
    Picture expected = picture;
    for (uint32_t &pixel : expected.pixels)
        pixel = pixel == 0 ? 0xFFFFFFFF : pixel;
    for (int bits : {4, 8, 16, 24, 32}) {
        SCOPED_TRACE(bits);
        Bytes icon = MakeIconImage(picture, bits);
        icon[12] = 0;            // planes
        icon[16] = BI_BITFIELDS; // compression; neither is read
        Hold(CategoryIcon, icon);
        ExpectPicture(expected, 134, 68);
        EXPECT_EQ(InformationLine(100), "32 X 32, " + std::to_string(bits) + " bits");
    }
    // So is another ground.
    Canvas ground(32, 32, RGB(0, 128, 0));
    LONG width, height;
    WORD bitCount;
    DrawIconImage(ground.dc, 0, 0, MakeIconImage(picture, 8).data(), &width, &height, &bitCount);
    EXPECT_EQ(ground.At(5, 5), RGB(0, 128, 0));
    EXPECT_EQ(ground.At(5, 0), RGB(0, 0, 255));
    EXPECT_EQ(ground.At(5, 6), RGB(255, 0, 0));
    // Alpha is blended over white; a colour of one step in each channel shows the rounding.
    picture = MakePicture(2, 2, 0x800000FF);
    Hold(CategoryIcon, MakeIconImage(picture, 32));
    ExpectPicture(MakePicture(2, 2, 0xFF7F7FFF), 149, 98);
    // An odd stored height has one row that is none of the picture's.
    Bytes odd = MakeIconImage(MakePicture(32, 32, 0xFFFF0000), 24);
    PutU32(odd, 8, 65);
    Hold(CategoryIcon, odd);
    EXPECT_EQ(InformationLine(67 + 32), "32 X 32, 24 bits");
}

TEST_F(PaneTest, DrawsPngIconsBlendedOverWhiteAndLeavesNoFile)
{
    char name[MAX_PATH];
    Picture picture = MakePicture(64, 32, 0x800000FF);
    picture.At(0, 0) = 0x00FF0000;
    picture.At(1, 0) = 0xFF102030;
    Picture expected = MakePicture(64, 32, 0xFF7F7FFF);
    expected.At(0, 0) = 0xFFFFFFFF;
    expected.At(1, 0) = 0xFF102030;
    Hold(CategoryIcon, MakePng(picture));
    ExpectPicture(expected, 118, 84);
    EXPECT_EQ(InformationLine(116), "64 X 32, 32 bits, PNG Resource");
    Bytes damaged = MakePng(picture);
    damaged.resize(40);
    Hold(CategoryIcon, damaged);
    EXPECT_EQ(InformationLine(0), "0 X 0, 0 bits, PNG Resource");
    ASSERT_GT(MakeTempFileName(name, "VLXP", ".png", 1), 0);
    EXPECT_FALSE(std::filesystem::exists(name));
}

TEST_F(PaneTest, DrawsNothingOfAPictureThatIsNotWhole)
{
    const Bytes bitmap = MakeDib(Pattern(40, 30), 24), colored = MakeDib(Pattern(40, 30), 8);
    const Bytes icon = MakeIconImage(Pattern(32, 32), 8);
    const Bytes deepIcon = MakeIconImage(Pattern(32, 32), 32);
    const size_t cutMask = 40 + 1024 + 1024 + 127;
    const struct {
        const char *damage;
        DWORD category;
        const Bytes &data;
        size_t offset;
        uint32_t value;
        size_t size;
        const char *line;
        int bottom;
    } cases[] = {
        {"cut rows", CategoryBitmap, bitmap, 4, 40, 1000, "40 X 30, 24 bits", 115},
        {"cut header", CategoryBitmap, bitmap, 4, 40, 39, "0 X 0, 0 bits", 100},
        {"no data", CategoryBitmap, bitmap, 4, 40, 0, "0 X 0, 0 bits", 100},
        {"colours past the end", CategoryBitmap, colored, 32, ~0u, 2000, "40 X 30, 8 bits", 115},
        {"cut mask", CategoryIcon, icon, 4, 32, cutMask, "32 X 32, 8 bits", 100},
        {"no icon", CategoryIcon, icon, 4, 32, 7, "0 X 0, 0 bits", 100},
        {"huge icon", CategoryIcon, deepIcon, 4, 0x7FFFFFFF, 4000, "2147483647 X 32, 32 bits", 100},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.damage);
        Bytes data = c.data;
        PutU32(data, c.offset, c.value);
        data.resize(c.size);
        Hold(c.category, data);
        const Pixels pixels = Painted();
        for (int y = 0; y < c.bottom; y++)
            for (int x = 0; x < PANE_WIDTH; x++)
                ASSERT_EQ(pixels.At(x, y), 0xFFFFFFu);
        EXPECT_EQ(InformationLine(c.bottom), c.line);
    }
    // Heights whose line would lie at no coordinate.
    for (uint32_t height : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        Bytes endless = icon;
        PutU32(endless, 8, height);
        for (DWORD category : {CategoryIcon, CategoryBitmap}) {
            Hold(category, endless);
            Painted();
        }
    }
}

static void ExpectLines(const std::vector<DrawnText> &lines, const Texts &texts, int top)
{
    ASSERT_EQ(lines.size(), texts.size());
    for (size_t i = 0; i < lines.size(); i++) {
        EXPECT_EQ(lines[i].text, texts[i]);
        EXPECT_EQ(lines[i].x, 4);
        EXPECT_EQ(lines[i].y, top + 13 * (int)i);
    }
}

TEST_F(PaneTest, WritesAStringTableLineByLine)
{
    Hold(CategoryString, MakeStringBlock({u"", u"", u"abc", u"a\r\n\tb\x01", u"\xE4 & \u20AC",
                                          std::u16string(300, u'x')}));
    const Texts texts = {"abc", "a\\r\\n\\tb\xA4", "\xE4 & \x80", std::string(260, 'x')};
    ExpectLines(Lines(), texts, 0);
    // The last string runs past the block: it is left out.
    Bytes cut = MakeStringBlock({u"abc", u"defg"});
    cut.resize(2 + 6 + 2 + 6);
    Hold(CategoryString, cut);
    ExpectLines(Lines(), {"abc"}, 0);
    Hold(CategoryString, {});
    ExpectLines(Lines(), {}, 0);
    // Only lines that begin in the pane are written.
    Hold(CategoryString, MakeStringBlock(std::vector<std::u16string>(40, u"line")));
    EXPECT_EQ(Lines(300, 25).size(), 2u);
    EXPECT_EQ(Lines(300, 26).size(), 3u);
}

TEST_F(PaneTest, DumpsOtherDataInHexadecimal)
{
    Bytes data = {0x41, 0x31, 0x20, 0x7A, 0xFF, 0x00, 0x5A, 0x5B, 0x60, 0x61,
                  0x7B, 0x40, 0x0D, 0x0A, 0x80, 0xE4, 0x42, 0x63, 0x07, 0x5F};
    Hold(CategoryBinary, data);
    ExpectLines(Lines(),
                {"41 31 20 7A FF 00 5A 5B-60 61 7B 40 0D 0A 80 E4  A..z..Z..a......",
                 "42 63 07 5F " + std::string(36, ' ') + " Bc.."},
                2);
    Hold(CategoryBinary, Bytes(100'000, 'x'));
    EXPECT_EQ(Lines(300, 200).size(), 16u); // the last at 2 + 15 * 13
    EXPECT_EQ(Lines(300, 197).size(), 16u);
    EXPECT_EQ(Lines(300, 196).size(), 15u);
    Hold(CategoryBinary, {});
    ExpectLines(Lines(), {}, 2);
}

TEST_F(PaneTest, DrawsNothingWithoutAnEntry)
{
    Hold(CategoryBinary, {1});
    const RECT rect = {0, 0, 10, 10};
    HDC dc = CreateCompatibleDC(nullptr);
    EXPECT_EQ(PaintResource(dc, &rect, catalog.entries, 1, 0), 1);
    EXPECT_EQ(PaintResource(dc, &rect, catalog.entries, 1, 1), 0);
    EXPECT_EQ(PaintResource(dc, &rect, catalog.entries, 1, -1), 0);
    EXPECT_EQ(PaintResource(dc, &rect, catalog.entries, 0, 0), 0);
    EXPECT_EQ(PaintResource(dc, &rect, nullptr, 1, 0), 0);
    DeleteDC(dc);
    Hold(4, {1, 2, 3});
    ExpectLines(Lines(), {}, 0);
}
