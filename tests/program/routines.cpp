#include "program/routines.h"

#include "program/globals.h"
#include "tests/support/drive.h"

struct Routines : ProgramTest {
};

static HWND MakePopup(int x, int y, int width, int height)
{
    return CreateWindowExA(0, "button", "", WS_POPUP, x, y, width, height, globals.mainWindow,
                           nullptr, globals.instance, nullptr);
}

TEST_F(Routines, CentresAWindowAlsoOneLargerThanTheScreen)
{
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    const struct {
        int width, height, x, y;
    } cases[] = {
        {400, 300, (width - 400) / 2, (height - 300) / 2},
        {width + 1, height + 3, 0, -1},
    };
    for (const auto &c : cases) {
        HWND window = MakePopup(5, 5, c.width, c.height);
        CenterOnScreen(window);
        RECT rect;
        GetWindowRect(window, &rect);
        EXPECT_EQ(rect.left, c.x);
        EXPECT_EQ(rect.top, c.y);
        EXPECT_EQ(rect.right - rect.left, c.width);
        EXPECT_EQ(rect.bottom - rect.top, c.height);
        DestroyWindow(window);
    }
}

TEST_F(Routines, AControlsBrushBeginsWhereItsWindowDoes)
{
    HWND window = MakePopup(200, 150, 50, 50);
    HDC dc = GetDC(window);
    POINT origin = {};
    EXPECT_EQ(SetControlColors(window, dc), globals.backgroundBrush);
    SetBrushOrgEx(dc, 0, 0, &origin);
    EXPECT_EQ(origin.x, 200);
    EXPECT_EQ(origin.y, 150);
    ReleaseDC(window, dc);
    DestroyWindow(window);
}
