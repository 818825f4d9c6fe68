#include "tests/support/canvas.h"

#include <gtest/gtest.h>

static const COLORREF black = RGB(0, 0, 0);
static const COLORREF white = RGB(255, 255, 255);
static const COLORREF red = RGB(255, 0, 0);
static const COLORREF yellow = RGB(255, 255, 0);

// A checkerboard whose first pixel is black.
static HBRUSH MakeCheckerBrush()
{
    const BYTE rows[] = {0x55, 0, 0xAA, 0, 0x55, 0, 0xAA, 0, 0x55, 0, 0xAA, 0, 0x55, 0, 0xAA, 0};
    HBITMAP bitmap = CreateBitmap(8, 8, 1, 1, rows);
    HBRUSH brush = CreatePatternBrush(bitmap);
    EXPECT_TRUE(DeleteObject(bitmap));
    return brush;
}

// A bitmap of 3 x 2 pixels: red green blue, under it black white yellow.
static HBITMAP MakePicture(HDC dc)
{
    const DWORD pixels[] = {0xFF0000, 0x00FF00, 0x0000FF, 0x000000, 0xFFFFFF, 0xFFFF00};
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), 3, -2, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    return CreateDIBitmap(dc, &info.bmiHeader, CBM_INIT, pixels, &info, DIB_RGB_COLORS);
}

// The bitmap in a context of its own.
struct PictureContext {
    HDC dc;
    HBITMAP picture;

    explicit PictureContext(const Canvas &canvas)
        : dc(CreateCompatibleDC(canvas.dc)), picture(MakePicture(canvas.dc))
    {
        EXPECT_NE(SelectObject(dc, picture), nullptr);
    }
    ~PictureContext()
    {
        EXPECT_TRUE(DeleteDC(dc));
        EXPECT_TRUE(DeleteObject(picture));
    }
};

TEST(Drawing, RectangleWithoutPenLeavesItsLastColumnAndRow)
{
    struct {
        int left, top, right, bottom;
        const char *picture;
    } const cases[] = {
        {1, 1, 4, 3, "......\n.##...\n......\n......\n"},
        {4, 3, 1, 1, "......\n.##...\n......\n......\n"}, // corners in any order
        {1, 1, 2, 3, "......\n......\n......\n......\n"}, // one column is all outline
        {-3, -3, 3, 2, "##....\n......\n......\n......\n"},
        {4, 2, 99, 99, "......\n......\n....##\n....##\n"},
    };
    for (const auto &row : cases) {
        Canvas canvas(6, 4);
        HBRUSH brush = CreateSolidBrush(black);
        SelectObject(canvas.dc, brush);
        SelectObject(canvas.dc, GetStockObject(NULL_PEN));
        EXPECT_TRUE(Rectangle(canvas.dc, row.left, row.top, row.right, row.bottom));
        EXPECT_EQ(canvas.Picture(), row.picture);
        SelectObject(canvas.dc, GetStockObject(WHITE_BRUSH));
        DeleteObject(brush);
    }
}

TEST(Drawing, XorRectangleDrawnTwiceIsGone)
{
    Canvas canvas(7, 4);
    HBRUSH brush = MakeCheckerBrush();
    EXPECT_EQ(SelectObject(canvas.dc, brush), GetStockObject(WHITE_BRUSH));
    EXPECT_NE(SelectObject(canvas.dc, GetStockObject(NULL_PEN)), nullptr);
    EXPECT_EQ(SetROP2(canvas.dc, R2_XORPEN), R2_COPYPEN);
    // The text colour, black, is where the pattern is black.
    canvas.Fill(red);
    Rectangle(canvas.dc, 1, 0, 6, 4);
    EXPECT_EQ(canvas.Picture(), "RCRCRRR\nRRCRCRR\nRCRCRRR\nRRRRRRR\n");
    Rectangle(canvas.dc, 1, 0, 6, 4);
    EXPECT_EQ(canvas.Picture(), "RRRRRRR\nRRRRRRR\nRRRRRRR\nRRRRRRR\n");
    EXPECT_EQ(SetROP2(canvas.dc, R2_COPYPEN), R2_XORPEN);
    EXPECT_EQ(SelectObject(canvas.dc, GetStockObject(WHITE_BRUSH)), brush);
    EXPECT_TRUE(DeleteObject(brush));
}

TEST(Drawing, PatternTakesTheContextsColorsAndOrigin)
{
    Canvas canvas(4, 2);
    HBRUSH brush = MakeCheckerBrush();
    const RECT all = {0, 0, 4, 2};
    EXPECT_EQ(SetTextColor(canvas.dc, red), black);
    EXPECT_EQ(SetBkColor(canvas.dc, yellow), white);
    SetROP2(canvas.dc, R2_XORPEN); // does not count for FillRect
    EXPECT_EQ(FillRect(canvas.dc, &all, brush), 1);
    EXPECT_EQ(canvas.Picture(), "RYRY\nYRYR\n");
    POINT before = {-1, -1};
    EXPECT_TRUE(UnrealizeObject(brush));
    EXPECT_TRUE(SetBrushOrgEx(canvas.dc, 3, 0, &before));
    EXPECT_EQ(before.x, 0);
    FillRect(canvas.dc, &all, brush);
    EXPECT_EQ(canvas.Picture(), "YRYR\nRYRY\n");
    DeleteObject(brush);
}

TEST(Drawing, FillAndFrame)
{
    HBRUSH brush = CreateSolidBrush(black);
    struct {
        RECT rect;
        int framed;
        const char *fill;
        const char *frame;
    } const cases[] = {
        {{1, 0, 5, 4}, 1, ".####.\n.####.\n.####.\n.####.\n", ".####.\n.#..#.\n.#..#.\n.####.\n"},
        {{1, 1, 2, 3}, 1, "......\n.#....\n.#....\n......\n", "......\n.#....\n.#....\n......\n"},
        {{2, 1, 2, 3}, 0, "......\n......\n......\n......\n", "......\n......\n......\n......\n"},
        {{-1, -1, 9, 2}, 1, "######\n######\n......\n......\n", "......\n######\n......\n......\n"},
        // Corners the other way round: the last column and row are the others.
        {{4, 3, 2, 1}, 0, "......\n......\n...##.\n...##.\n", "......\n......\n......\n......\n"},
        {{9, 9, 12, 12}, 1, "......\n......\n......\n......\n", "......\n......\n......\n......\n"},
    };
    for (const auto &row : cases) {
        Canvas canvas(6, 4);
        EXPECT_EQ(FillRect(canvas.dc, &row.rect, brush), 1);
        EXPECT_EQ(canvas.Picture(), row.fill);
        canvas.Fill(white);
        EXPECT_EQ(FrameRect(canvas.dc, &row.rect, brush), row.framed);
        EXPECT_EQ(canvas.Picture(), row.frame);
    }
    DeleteObject(brush);
}

TEST(Drawing, BitBltCutsAtBothEdges)
{
    struct {
        int x, y, width, height, sourceX, sourceY;
        const char *picture;
    } const cases[] = {
        {1, 0, 3, 2, 0, 0, "CRGBC\nC#.YC\nCCCCC\n"},
        {0, 1, 9, 9, 0, 0, "CCCCC\nRGBCC\n#.YCC\n"}, // more than the bitmap has
        {1, 0, 3, 2, 1, 1, "C.YCC\nCCCCC\nCCCCC\n"},
        {1, 0, 3, 2, -1, -1, "CCCCC\nCCRGC\nCCCCC\n"},
        {-2, -1, 3, 2, 0, 0, "YCCCC\nCCCCC\nCCCCC\n"},
        {4, 2, 3, 2, 0, 0, "CCCCC\nCCCCC\nCCCCR\n"},
        {1, 1, 0, 2, 0, 0, "CCCCC\nCCCCC\nCCCCC\n"},
        {9, 9, 3, 2, 0, 0, "CCCCC\nCCCCC\nCCCCC\n"},
        {0, 0, 3, 2, 3, 2, "CCCCC\nCCCCC\nCCCCC\n"},
        // Negative sizes reach the other way, and nothing is mirrored.
        {4, 2, -3, -2, 3, 2, "CCCCC\nCC.YC\nCCCCC\n"},
        {3, 0, -3, 2, 3, 0, "CGBCC\nC.YCC\nCCCCC\n"},
    };
    for (const auto &row : cases) {
        Canvas canvas(5, 3, RGB(0, 255, 255));
        const PictureContext from(canvas);
        EXPECT_TRUE(BitBlt(canvas.dc, row.x, row.y, row.width, row.height, from.dc, row.sourceX,
                           row.sourceY, SRCCOPY));
        EXPECT_EQ(canvas.Picture(), row.picture);
    }
}

TEST(Drawing, BitBltCombinesPixels)
{
    for (const auto &[rop, picture] :
         {std::pair(SRCAND, "RG#\n#YY\n"), {SRCINVERT, "GR.\nYB#\n"}}) {
        Canvas canvas(3, 2, yellow);
        const PictureContext from(canvas);
        EXPECT_TRUE(BitBlt(canvas.dc, 0, 0, 3, 2, from.dc, 0, 0, rop));
        EXPECT_EQ(canvas.Picture(), picture);
    }
}

TEST(Drawing, BitBltOverItselfCopiesWhatWasThere)
{
    for (const auto &[x, picture] : {std::pair(1, "RRG\n##.\n"), {-1, "GBB\n.YY\n"}}) {
        Canvas canvas(3, 2);
        const PictureContext own(canvas);
        EXPECT_TRUE(BitBlt(own.dc, x, 0, 3, 2, own.dc, 0, 0, SRCCOPY));
        BitBlt(canvas.dc, 0, 0, 3, 2, own.dc, 0, 0, SRCCOPY);
        EXPECT_EQ(canvas.Picture(), picture);
    }
}

TEST(Drawing, PatternsOfAnySizeRepeat)
{
    const BYTE rows[] = {0xA0, 0, 0x40, 0};
    Canvas canvas(7, 3);
    HBITMAP bitmaps[] = {CreateBitmap(3, 2, 1, 1, rows), MakePicture(canvas.dc)};
    const char *pictures[] = {"#..#..#\n.##.##.\n#..#..#\n", "GBRGBRG\n.Y#.Y#.\nGBRGBRG\n"};
    const RECT all = {0, 0, 7, 3};
    SetBrushOrgEx(canvas.dc, -1, -2, nullptr);
    for (int i = 0; i < 2; i++) {
        HBRUSH brush = CreatePatternBrush(bitmaps[i]);
        DeleteObject(bitmaps[i]);
        EXPECT_EQ(CreatePatternBrush(bitmaps[i]), nullptr);
        FillRect(canvas.dc, &all, brush);
        EXPECT_EQ(canvas.Picture(), pictures[i]);
        DeleteObject(brush);
    }
}

TEST(DrawingObjects, DeletedObjectLivesUntilItIsNoLongerSelected)
{
    Canvas canvas(3, 3);
    HBRUSH brush = CreateSolidBrush(red);
    SelectObject(canvas.dc, brush);
    SelectObject(canvas.dc, GetStockObject(NULL_PEN));
    EXPECT_TRUE(DeleteObject(brush));
    Rectangle(canvas.dc, 0, 0, 3, 3);
    EXPECT_EQ(canvas.Picture(), "RR.\nRR.\n...\n");
    EXPECT_EQ(SelectObject(canvas.dc, GetStockObject(WHITE_BRUSH)), brush);
    EXPECT_FALSE(DeleteObject(brush));
    EXPECT_EQ(SelectObject(canvas.dc, brush), nullptr);

    // It goes with the context that it is selected in, too.
    HDC memory = CreateCompatibleDC(canvas.dc);
    HBITMAP picture = MakePicture(canvas.dc);
    SelectObject(memory, picture);
    HDC other = CreateCompatibleDC(canvas.dc);
    EXPECT_EQ(SelectObject(other, picture), nullptr); // one context at a time
    EXPECT_EQ(SelectObject(memory, picture), picture);
    EXPECT_TRUE(DeleteObject(picture));
    EXPECT_TRUE(BitBlt(canvas.dc, 0, 0, 3, 2, memory, 0, 0, SRCCOPY));
    EXPECT_EQ(canvas.Picture(), "RGB\n#.Y\n...\n");
    DeleteDC(memory);
    EXPECT_FALSE(DeleteObject(picture));
    DeleteDC(other);
}

TEST(DrawingObjects, StockObjectsStay)
{
    const RECT all = {0, 0, 1, 1};
    for (const auto &[object, color] :
         {std::pair(GetStockObject(WHITE_BRUSH), white),
          {GetSysColorBrush(COLOR_BTNSHADOW), GetSysColor(COLOR_BTNSHADOW)}}) {
        EXPECT_TRUE(DeleteObject(object));
        Canvas canvas(1, 1, red);
        EXPECT_EQ(FillRect(canvas.dc, &all, (HBRUSH)object), 1);
        EXPECT_EQ(canvas.At(0, 0), color);
    }
    const Canvas canvas(1, 1);
    HFONT font = CreateFontA(13, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "");
    for (HGDIOBJ other : {GetStockObject(NULL_PEN), (HGDIOBJ)font}) {
        HGDIOBJ stock = SelectObject(canvas.dc, other);
        EXPECT_TRUE(DeleteObject(stock));
        EXPECT_EQ(SelectObject(canvas.dc, stock), other);
    }
    EXPECT_TRUE(DeleteObject(font));
    EXPECT_EQ(GetSysColorBrush(COLOR_BTNSHADOW), GetSysColorBrush(COLOR_BTNSHADOW));
    EXPECT_EQ(GetSysColor(99), 0u);
    EXPECT_EQ(GetSysColorBrush(99), nullptr);
    EXPECT_EQ(GetStockObject(99), nullptr);
}

TEST(DrawingObjects, EveryCallRefusesADeadContextAndTheHandlesOfOtherKinds)
{
    Canvas canvas(1, 1);
    HDC dead = CreateCompatibleDC(canvas.dc);
    EXPECT_TRUE(DeleteDC(dead));
    RECT all = {0, 0, 1, 1};
    HBRUSH brush = CreateSolidBrush(black);
    EXPECT_EQ(CreateCompatibleDC(dead), nullptr);
    EXPECT_EQ(MakePicture(dead), nullptr);
    EXPECT_EQ(SelectObject(dead, brush), nullptr);
    for (const auto set : {SetTextColor, SetBkColor})
        EXPECT_EQ(set(dead, red), CLR_INVALID);
    EXPECT_EQ(SetBkMode(dead, TRANSPARENT), 0);
    EXPECT_EQ(SetROP2(dead, R2_XORPEN), 0);
    EXPECT_FALSE(SetBrushOrgEx(dead, 0, 0, nullptr));
    EXPECT_FALSE(BitBlt(canvas.dc, 0, 0, 1, 1, dead, 0, 0, SRCCOPY));
    EXPECT_FALSE(BitBlt(dead, 0, 0, 1, 1, dead, 0, 0, SRCCOPY));
    EXPECT_FALSE(Rectangle(dead, 0, 0, 1, 1));
    EXPECT_EQ(FrameRect(dead, &all, brush), 0);
    EXPECT_FALSE(TextOutA(dead, 0, 0, "a", 1));
    EXPECT_EQ(DrawTextA(dead, "a", 1, &all, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX),
              0);
    EXPECT_EQ(SetBkMode(canvas.dc, 3), 0); // a wrong mode changes nothing
    EXPECT_EQ(SetROP2(canvas.dc, 0), 0);
    EXPECT_EQ(SetBkMode(canvas.dc, TRANSPARENT), OPAQUE);
    EXPECT_EQ(SetROP2(canvas.dc, R2_COPYPEN), R2_COPYPEN);
    EXPECT_FALSE(DeleteDC((HDC)brush));
    for (HGDIOBJ none : {(HGDIOBJ) nullptr, (HGDIOBJ)canvas.dc})
        EXPECT_EQ(SelectObject(canvas.dc, none), nullptr);
    for (HBITMAP none : {(HBITMAP) nullptr, (HBITMAP)brush})
        EXPECT_EQ(CreatePatternBrush(none), nullptr);
    DeleteObject(brush);
    for (HGDIOBJ none : {(HGDIOBJ) nullptr, (HGDIOBJ)brush}) {
        EXPECT_FALSE(UnrealizeObject(none));
        EXPECT_FALSE(DeleteObject(none));
    }
}
