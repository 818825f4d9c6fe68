// The main window, driven through its messages.
#include "shell/main_window.h"

#include "program/globals.h"
#include "program/ids.h"
#include "tests/support/drive.h"

struct MainWindow : ProgramTest {
    void Open(const std::string &path)
    {
        SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0, (LPARAM)path.c_str());
        RunUntilIdle();
    }

    void Mouse(UINT message, int x, int y = 50)
    {
        SendMessageA(globals.mainWindow, message, 0, MAKELPARAM(x, y));
    }
};

TEST_F(MainWindow, ATitleThatIsTooLongShowsTheNamesEnd)
{
    SetMainTitle(std::string(248, 'n').c_str());
    EXPECT_EQ(TitleText(), "Quillmoor [ " + std::string(248, 'n') + " ] ");
    SetMainTitle(std::string(249, 'n').c_str());
    EXPECT_EQ(TitleText(), "Quillmoor [ ..." + std::string(245, 'n') + " ] ");
    SetMainTitle((std::string(400, 'n') + "end").c_str());
    EXPECT_EQ(TitleText(), "Quillmoor [ ..." + std::string(242, 'n') + "end ] ");
}

TEST_F(MainWindow, TheDragBarIsACheckerboardOverBothChildrenUntilTheRelease)
{
    Open(TestFile("every.dll", EveryKind()));
    UpdateWindow(globals.mainWindow);
    const Pixels before = PixelsOf(globals.mainWindow);
    // In the row given: how many of the five columns around x differ from the picture before.
    auto changed = [&](const Pixels &now, int x, int y) {
        int count = 0;
        for (int i = x - 2; i <= x + 2; i++)
            count += now.At(i, y) != before.At(i, y);
        return count;
    };
    Mouse(WM_LBUTTONDOWN, 180);
    for (int x : {240, 140}) {
        Mouse(WM_MOUSEMOVE, x);
        const Pixels now = PixelsOf(globals.mainWindow);
        // A null pen leaves the last column and row out: four columns, every second pixel.
        for (int y : {10, 11, 300})
            EXPECT_EQ(changed(now, x, y), 2) << x << " " << y;
        EXPECT_NE(now.At(x, 300) != before.At(x, 300), now.At(x, 301) != before.At(x, 301));
        EXPECT_EQ(changed(now, 2, 300) + changed(now, 2, 301), 0);
        EXPECT_EQ(changed(now, 180, 300), 0);
        EXPECT_EQ(changed(now, x == 240 ? 140 : 240, 300), 0);
    }
    Mouse(WM_MOUSEMOVE, 180);
    Mouse(WM_LBUTTONUP, 180);
    RunUntilIdle();
    EXPECT_EQ(PixelsOf(globals.mainWindow).values, before.values);
}

TEST_F(MainWindow, AnswersTheRequestsOfItsControls)
{
    HDC dc = GetDC(Pane());
    for (UINT message : {WM_CTLCOLORMSGBOX, WM_CTLCOLORBTN, WM_CTLCOLORDLG, WM_CTLCOLORSTATIC}) {
        SetBkColor(dc, 0x123456);
        SetTextColor(dc, 0x123456);
        EXPECT_EQ(SendMessageA(globals.mainWindow, message, (WPARAM)dc, (LPARAM)Pane()),
                  (LRESULT)globals.backgroundBrush);
        EXPECT_EQ(SetBkColor(dc, 0), GetSysColor(COLOR_BTNFACE));
        EXPECT_EQ(SetTextColor(dc, 0), GetSysColor(COLOR_WINDOWTEXT));
    }
    ReleaseDC(Pane(), dc);
}
