// Lines of text by the cells that they fill: letters and background have the same colour.
#include "tests/support/canvas.h"
#include "tests/support/loops.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>

namespace
{

const COLORREF ink = RGB(0, 0, 255);
const UINT format = DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;

struct TextTest : testing::Test {
    SizedText sized;
    HFONT font = CreateFontA(13, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "MS Sans Serif");

    ~TextTest() override
    {
        DeleteObject(font);
    }

    // The rectangle around what draw fills of 100 x 60 pixels; empty at (100, 60) for nothing.
    RECT Cell(const std::function<void(HDC)> &draw)
    {
        Canvas canvas(100, 60);
        HGDIOBJ before = SelectObject(canvas.dc, font);
        SetTextColor(canvas.dc, ink);
        SetBkColor(canvas.dc, ink);
        draw(canvas.dc);
        SelectObject(canvas.dc, before);
        return RectAround(100, 60, [&](int x, int y) { return canvas.At(x, y) == ink; });
    }

    SIZE Size(const char *text, int count)
    {
        const RECT cell = Cell([&](HDC dc) { EXPECT_TRUE(TextOutA(dc, 2, 3, text, count)); });
        return {std::max(cell.right - cell.left, (LONG)0), cell.bottom - cell.top};
    }
};

TEST_F(TextTest, ALineFillsItsCell)
{
    const SIZE size = Size("a&bc", 3);
    const RECT cell = Cell([](HDC dc) { EXPECT_TRUE(TextOutA(dc, 5, 7, "a&bc", 3)); });
    EXPECT_EQ(cell.left, 5);
    EXPECT_EQ(cell.top, 7);
    EXPECT_NEAR(size.cy, 13, 1); // a face may miss its height a little
    EXPECT_GT(size.cx, Size("ab", 2).cx);
    EXPECT_EQ(Size("abc", 0).cx, 0);
    EXPECT_EQ(Cell([](HDC dc) { EXPECT_FALSE(TextOutA(dc, 5, 7, "abc", -1)); }).right, 0);
    EXPECT_EQ(Cell([](HDC dc) { TextOutA(dc, -3, -2, "abcd", 4); }).bottom, size.cy - 2);
    // Transparent, nothing but the letters is drawn.
    const auto drawSpaces = [](HDC dc) {
        SetBkMode(dc, TRANSPARENT);
        TextOutA(dc, 5, 7, "  ", 2);
    };
    EXPECT_EQ(Cell(drawSpaces).right, 0);
    // A font that was deleted while it is selected still draws.
    const auto drawWithDeleted = [this](HDC dc) {
        DeleteObject(font);
        TextOutA(dc, 5, 7, "abc", 3);
    };
    EXPECT_EQ(Cell(drawWithDeleted).bottom, 7 + size.cy);
    EXPECT_FALSE(DeleteObject(font));
}

TEST_F(TextTest, ALineIsCentredInItsRectangleAndCutByIt)
{
    const struct {
        const char *text;
        int count;
        RECT rect;
    } cases[] = {
        {"abcd", -1, {10, 10, 80, 40}}, {"abcdef", 4, {10, 10, 80, 41}},
        {"abc", -1, {10, 9, 80, 41}},   {"a&bc", -1, {11, 9, 80, 42}},
        {"abcd", -1, {30, 20, 41, 25}}, {"abcd", -1, {-9, -9, 12, 12}},
    };
    for (int height : {11, 14, 15}) {
        DeleteObject(font);
        font = CreateFontA(height, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "MS Sans Serif");
        for (const auto &row : cases) {
            SCOPED_TRACE(testing::Message() << height << ": " << row.text << row.rect.top);
            RECT rect = row.rect;
            int reach = 0;
            const RECT cell =
                Cell([&](HDC dc) { reach = DrawTextA(dc, row.text, row.count, &rect, format); });
            const SIZE size = Size(row.text, row.count < 0 ? (int)strlen(row.text) : row.count);
            const LONG left = (rect.left + rect.right - size.cx) / 2;
            const LONG down = (rect.bottom - rect.top) / 2 - size.cy / 2;
            EXPECT_EQ(reach, down + size.cy);
            EXPECT_EQ(cell.left, std::max({left, rect.left, (LONG)0}));
            EXPECT_EQ(cell.right, std::min(left + size.cx, rect.right));
            EXPECT_EQ(cell.top, std::max({rect.top + down, rect.top, (LONG)0}));
            EXPECT_EQ(cell.bottom, std::min(rect.top + down + size.cy, rect.bottom));
        }
    }
    // Tabs and line ends are no more than characters of the one line.
    RECT rect = {0, 0, 100, 60};
    const RECT cell = Cell([&](HDC dc) { DrawTextA(dc, "a\tb\r\nc", -1, &rect, format); });
    EXPECT_EQ(cell.bottom - cell.top, Size("abc", 3).cy);
    // Nothing is drawn in a rectangle of no pixels, and nothing of no text.
    for (RECT none : {RECT{20, 20, 20, 40}, RECT{20, 20, 40, 20}})
        EXPECT_EQ(Cell([&](HDC dc) { DrawTextA(dc, "abcd", -1, &none, format); }).right, 0);
    EXPECT_EQ(Cell([&](HDC dc) { DrawTextA(dc, "", -1, &rect, format); }).right, 0);
    EXPECT_EQ(Cell([&](HDC dc) { DrawTextA(dc, "abcd", 0, &rect, format); }).right, 0);
}

} // namespace
