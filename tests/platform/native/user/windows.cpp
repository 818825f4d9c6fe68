// The quiet half with a recorder in place of the display: what the display reports, what it is
// told, and what Windows does not promise.
#include <cstring>

#include "platform/native/user/geometry.h"
#include "platform/native/user/input.h"
#include "platform/native/user/menus.h"
#include "platform/native/user/painting.h"
#include "platform/native/user/queue.h"
#include "platform/native/visible.h"
#include "tests/support/recorder.h"

namespace
{

struct NativeWindow : MessageTest {
    HWND window = Make("main", nullptr, WS_OVERLAPPEDWINDOW | WS_VISIBLE);

    NativeWindow()
    {
        told.clear();
        visible = noDisplay;
    }

    HWND MakePane(int x, int width)
    {
        return MakeControl("button", window, 7, {x, 0, x + width, 100}, BS_OWNERDRAW);
    }
};

// --- size ---

// A window manager that gives what it is asked for, or always the same size.
SIZE stubbornSize;
int questions;

TEST_F(NativeWindow, AManagerIsAskedOnceForEachSizeThatItGives)
{
    // A window that wants to be at least 300 wide, as a size rule asks for it.
    actions[WM_SIZE] = [](HWND moved, WPARAM, LPARAM) -> LRESULT {
        RECT rect;
        GetWindowRect(moved, &rect);
        if (rect.right - rect.left < 300)
            MoveWindow(moved, rect.left, rect.top, 300, 100, TRUE);
        return 0;
    };
    questions = 0;
    visible.mayRefuseSizes = true;
    visible.windowChanged = [](HWND changed, WindowChange change) {
        const RECT &wanted = WindowOf(changed)->rect;
        if (change != WindowChange::Rect || wanted.right - wanted.left != 300)
            return;
        questions++;
        ASSERT_LT(questions, 10);
        ReportRect(changed, {100, 50, 100 + stubbornSize.cx, 50 + stubbornSize.cy}, {0, 0, 0, 0});
    };
    stubbornSize = {250, 90};
    ReportRect(window, {100, 50, 350, 140}, {0, 0, 0, 0});
    EXPECT_EQ(questions, 1);
    RECT rect;
    GetWindowRect(window, &rect);
    EXPECT_EQ(rect.right - rect.left, 250);

    stubbornSize = {240, 90};
    ReportRect(window, {100, 50, 340, 140}, {0, 0, 0, 0});
    EXPECT_EQ(questions, 2);
    ReportRect(window, {100, 50, 350, 140}, {0, 0, 0, 0});
    EXPECT_EQ(questions, 2);
    // The question that was withheld is asked once the sizes have settled; refused again, no more.
    stubbornSize = {250, 90};
    for (int i = 0; i < 5; i++)
        ReportSettled(window);
    EXPECT_EQ(questions, 3);
    stubbornSize = {300, 100};
    ReportRect(window, {100, 50, 340, 140}, {0, 0, 0, 0});
    GetWindowRect(window, &rect);
    EXPECT_EQ(rect.right - rect.left, 300);
    // One that takes back what it gave, each time after a while, is not asked for ever.
    questions = 0;
    for (int i = 0; i < 20; i++) {
        ReportRect(window, {100, 50, 350, 140}, {0, 0, 0, 0});
        ReportSettled(window);
    }
    EXPECT_LT(questions, 9);
}

TEST_F(NativeWindow, TheFramesWidthsCountToTheOuterRectangleOnly)
{
    std::vector<LPARAM> sizes;
    actions[WM_SIZE] = [&](HWND, WPARAM, LPARAM size) -> LRESULT {
        return sizes.push_back(size), 0;
    };
    ReportRect(window, {90, 20, 310, 155}, {5, 25, 5, 10});
    ReportRect(window, {90, 20, 290, 155}, {5, 25, 5, 10});
    EXPECT_EQ(sizes, (std::vector<LPARAM>{MAKELPARAM(210, 100), MAKELPARAM(190, 100)}));
    POINT origin = {0, 0};
    ClientToScreen(window, &origin);
    EXPECT_EQ(origin.x, 95);
    EXPECT_EQ(origin.y, 45);
}

// --- the overlay ---

TEST_F(NativeWindow, DrawingAboveChildrenStaysUntilWhatIsBelowIsPainted)
{
    HWND left = MakePane(0, 80), right = MakePane(120, 80);
    actions[WM_DRAWITEM] = [](HWND, WPARAM, LPARAM lParam) -> LRESULT {
        const auto *item = (const DRAWITEMSTRUCT *)lParam;
        told.push_back("drawn");
        return FillRect(item->hDC, &item->rcItem, (HBRUSH)GetStockObject(WHITE_BRUSH));
    };
    UpdateWindow(window);
    told.clear();
    const auto draw = [this](const RECT &bar) {
        HDC dc = GetDC(window);
        HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
        FillRect(dc, &bar, red);
        DeleteObject(red);
        ReleaseDC(window, dc);
    };
    // What lies above the place (x, 50): a colour, or -1 for nothing.
    const auto above = [this](LONG x) -> int {
        const auto &[pixels, covered] = WindowOf(window)->overlay;
        for (const RECT &part : covered)
            if (x >= part.left && x < part.right && part.top <= 50 && part.bottom > 50)
                return pixels.surface.pixels[50 * pixels.surface.stride + (size_t)x] & 0xFFFFFF;
        return -1;
    };
    draw({70, 0, 130, 100});
    draw({0, 0, 5, 5});
    // The rest shows what was there: the children's white and the window's own background.
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(above(75), 0xFF0000);
    EXPECT_EQ(above(10), 0xFFFFFF);
    EXPECT_EQ(above(190), 0xFFFFFF);

    InvalidateRect(left, nullptr, FALSE);
    UpdateWindow(left);
    EXPECT_EQ(above(75), -1);
    EXPECT_EQ(above(100), 0xFF0000);

    const RECT bar = {95, 0, 125, 100};
    InvalidateRect(window, &bar, TRUE);
    UpdateWindow(window);
    EXPECT_EQ(above(100), -1);
    EXPECT_EQ(above(124), -1);
    EXPECT_EQ(above(90), 0xFF0000);

    MoveWindow(right, 85, 0, 80, 100, TRUE);
    EXPECT_EQ(above(90), -1);
}

TEST_F(NativeWindow, PixelsFollowTheScreensRatio)
{
    HWND pane = MakePane(0, 80);
    visible.ratio = [](HWND) { return 1.5; };
    actions[WM_DRAWITEM] = [](HWND, WPARAM, LPARAM lParam) -> LRESULT {
        const auto *item = (const DRAWITEMSTRUCT *)lParam;
        EXPECT_EQ(item->rcItem.right, 80);
        FillRect(item->hDC, &item->rcItem, (HBRUSH)GetStockObject(WHITE_BRUSH));
        return TRUE;
    };
    UpdateWindow(window);
    const WindowPixels &pixels = WindowOf(pane)->pixels;
    EXPECT_EQ(pixels.surface.width, 80);
    EXPECT_EQ(pixels.memory.size(),
              120u * (size_t)MemoryEdge(pixels.surface, pixels.surface.height));
    EXPECT_EQ(pixels.memory.back() & 0xFFFFFF, 0xFFFFFFu);
}

TEST_F(NativeWindow, InputComesAfterWhatIsPostedAndBeforePainting)
{
    actions[WM_LBUTTONDOWN] = [](HWND, WPARAM, LPARAM) -> LRESULT {
        return told.push_back("down"), 0;
    };
    actions[WM_PAINT] = [](HWND painted, WPARAM, LPARAM) -> LRESULT {
        told.push_back("paint");
        return DefWindowProcA(painted, WM_PAINT, 0, 0);
    };
    InvalidateRect(window, nullptr, TRUE);
    ReportMouse(window, WM_LBUTTONDOWN, 1, 1);
    PostMessageA(window, WM_COMMAND, 1, 0);
    RunWaiting();
    EXPECT_EQ(told, (Lines{"command 1", "down", "paint"}));
}

// --- popup menus, choosers ---

TEST_F(NativeWindow, AChosenCommandIsPostedAfterTheMenuHasClosed)
{
    HMENU menu = CreatePopupMenu();
    AppendMenuA(menu, MF_ENABLED, 103, "&Play");
    visible.runEvents = [](bool) { return ReportMenuClosed(103), true; };
    visible.showMenu = [](HMENU, POINT place, HWND) {
        told.push_back("shown at " + std::to_string(place.x) + "," + std::to_string(place.y));
        return true;
    };
    EXPECT_TRUE(TrackPopupMenu(menu, 0, 30, 40, 0, window, nullptr));
    EXPECT_EQ(told, Lines{"shown at 30,40"});
    RunWaiting();
    EXPECT_EQ(told, (Lines{"shown at 30,40", "command 103"}));

    // It goes with the program.
    visible.closeMenu = [] { told.push_back("closed"); };
    visible.runEvents = [](bool) { return PostQuitMessage(0), true; };
    TrackPopupMenu(menu, 0, 1, 2, 0, window, nullptr);
    EXPECT_EQ(told.back(), "closed");
    MSG message;
    EXPECT_FALSE(GetMessageA(&message, nullptr, 0, 0));
    DestroyMenu(menu);
}

TEST_F(NativeWindow, AChooserFillsTheRecordOnlyWhenAFileIsConfirmed)
{
    char path[20] = "7.BIN";
    OPENFILENAMEA record = {};
    record.lStructSize = OPENFILENAME_SIZE_VERSION_400A;
    record.lpstrFilter = "Icon files\0*.ICO\0All files\0*.*\0";
    record.nFilterIndex = 1;
    record.lpstrFile = path;
    record.nMaxFile = sizeof path;
    static bool isConfirmed;
    for (bool confirms : {false, true}) {
        isConfirmed = confirms;
        visible.chooseFile = [](FileChoice *choice) {
            EXPECT_TRUE(choice->isSave);
            EXPECT_EQ(choice->pathSize, 20u);
            EXPECT_STREQ(choice->path, "7.BIN");
            std::strcpy(choice->path, "/d.x/other");
            choice->filterIndex = 2;
            return isConfirmed;
        };
        EXPECT_EQ(GetSaveFileNameA(&record), (BOOL)confirms);
        EXPECT_STREQ(path, confirms ? "/d.x/other" : "7.BIN");
        EXPECT_EQ(record.nFilterIndex, confirms ? 2u : 1u);
    }
}

} // namespace
