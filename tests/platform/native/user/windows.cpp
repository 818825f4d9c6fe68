// The quiet half with a recorder in place of the display: what the display reports, what it is
// told, and what Windows does not promise.
#include "platform/native/user/dialogs.h"
#include "platform/native/user/geometry.h"
#include "platform/native/user/input.h"
#include "platform/native/user/menus.h"
#include "platform/native/user/queue.h"
#include "platform/native/user/text_lines.h"
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
    const auto report = [this](LONG width) {
        ReportRect(window, {100, 50, 100 + width, 140}, {0, 0, 0, 0});
        RECT rect;
        GetWindowRect(window, &rect);
        return rect.right - rect.left;
    };
    stubbornSize = {250, 90};
    EXPECT_EQ(report(250), 250);
    EXPECT_EQ(questions, 1);

    stubbornSize = {240, 90};
    for (LONG width : {240, 250}) {
        report(width);
        EXPECT_EQ(questions, 2);
    }
    // The question that was withheld is asked once the sizes have settled; refused again, no more.
    stubbornSize = {250, 90};
    for (int i = 0; i < 5; i++)
        ReportSettled(window);
    EXPECT_EQ(questions, 3);
    stubbornSize = {300, 100};
    EXPECT_EQ(report(240), 300);
    // One that takes back what it gave, each time after a while, is not asked for ever.
    questions = 0;
    for (int i = 0; i < 20; i++) {
        report(250);
        ReportSettled(window);
    }
    EXPECT_LT(questions, 9);
}

// --- pixels, input ---

TEST_F(NativeWindow, PixelsFollowTheScreensRatio)
{
    HWND pane = MakeControl("button", window, 7, {0, 0, 80, 100}, BS_OWNERDRAW);
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

TEST_F(NativeWindow, WhatIsPaintedBelowShowsThroughWhatIsDrawnAbove)
{
    HWND child = MakeControl("static", window, 5, {30, 20, 130, 80}, WS_BORDER);
    HWND inner = MakeControl("static", child, 6, {10, 5, 30, 25});
    UpdateWindow(window);
    ReleaseDC(window, GetDC(window));
    const auto tellCovered = [this](const char *when) {
        told.push_back(when);
        for (const RECT &part : WindowOf(window)->overlay.covered)
            for (const LONG edge : {part.left, part.top, part.right, part.bottom})
                told.back() += " " + std::to_string(edge);
    };
    tellCovered("all");
    InvalidateRect(inner, nullptr, FALSE);
    UpdateWindow(window);
    tellCovered("but one");
    MoveWindow(child, 0, 0, 10, 100, TRUE);
    tellCovered("moved");
    MoveWindow(window, 0, 0, 90, 50, TRUE);
    tellCovered("of another size");
    EXPECT_EQ(told,
              (Lines{"all 0 0 200 100", "but one 0 0 200 26 0 46 200 100 0 26 41 46 61 26 200 46",
                     "moved 10 0 200 20 10 20 30 26 130 20 200 26 10 80 200 100 10 46 30 80 "
                     "130 46 200 80 10 26 30 46 130 26 200 46",
                     "of another size"}));
}

TEST_F(NativeWindow, TextIsBrokenBetweenWordsAndPlacedByTabs)
{
    visible.measureText = [](const Font &, LPCSTR, int bytes) { return 10 * bytes; };
    const Font font = {};
    for (const char *text :
         {"", "one two", "one  two three", "longer", "a\r\n\nb", "end \r", "a\tb c"}) {
        told.push_back("");
        for (const std::string_view line : BreakLines(font, text, 70)) {
            told.back() += '|';
            for (const TextPiece &piece : PlacePieces(font, line))
                told.back() += std::to_string(piece.x) + std::string(piece.text) + " ";
            told.back() += std::to_string(TextWidth(font, line));
        }
    }
    EXPECT_EQ(told, (Lines{"|0 0", "|0one two 70", "|0one 30|0two 30|0three 50", "|0longer 60",
                           "|0a 10|0 0|0b 10", "|0end  40|0 0", "|0a 48b 58|0c 10"}));
}

INT_PTR CALLBACK TellInside(HWND dialog, UINT message, WPARAM, LPARAM)
{
    RECT inside = {};
    GetClientRect(dialog, &inside);
    if (message == WM_INITDIALOG)
        told.push_back(std::to_string(inside.right) + " x " + std::to_string(inside.bottom));
    return message == WM_INITDIALOG && EndDialog(dialog, 0);
}

TEST_F(NativeWindow, ADialogHasItsSizeInsideAnyFrame)
{
    const SizedText sizes;
    visible.frameAround = [](HWND, RECT *around) { *around = {3, 20, 5, 7}; };
    DialogTemplate plan = {};
    plan.width = 101;
    plan.height = 51;
    RunDialog(plan, nullptr, nullptr, TellInside, 0);
    EXPECT_EQ(told, Lines{"177 x 83"});
    for (const char *systems : {"button", "#32770", WC_TREEVIEWA})
        EXPECT_FALSE(UnregisterClassA(systems, nullptr)) << systems;
}

// --- popup menus ---

TEST_F(NativeWindow, AChosenCommandIsPostedAfterTheMenuHasClosed)
{
    HMENU menu = CreatePopupMenu();
    AppendMenuA(menu, MF_ENABLED, 103, "&Play");
    visible.showMenu = [](HMENU, POINT, HWND) { return false; };
    EXPECT_FALSE(TrackPopupMenu(menu, 0, 30, 40, 0, window, nullptr));
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

} // namespace
