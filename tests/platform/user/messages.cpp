// Messages: what is posted and sent when, what the user does, what controls tell their parent.
#include <utility>

#include "tests/support/recorder.h"

namespace
{

std::string PlaceOf(LPARAM place)
{
    return std::to_string((int16_t)LOWORD(place)) + "," + std::to_string((int16_t)HIWORD(place));
}

TEST_F(MessageTest, ALoopInsideAMessageTakesTheQuitRequestAndDeadWindowsGetNothing)
{
    HWND window = Make("main"), gone = Make("gone");
    told.clear();
    actions[WM_USER] = [&](HWND, WPARAM, LPARAM) -> LRESULT {
        PostMessageA(gone, WM_COMMAND, 4, 0);
        PostMessageA(window, WM_COMMAND, 5, 0);
        DestroyWindow(gone);
        PostQuitMessage(6);
        PostQuitMessage(7);
        MSG message;
        while (GetMessageA(&message, nullptr, 0, 0))
            DispatchMessageA(&message);
        EXPECT_EQ(message.message, (UINT)WM_QUIT);
        EXPECT_EQ(message.wParam, 7u);
        told.push_back("ended");
        PostMessageA(window, WM_COMMAND, 8, 0);
        PostQuitMessage(9);
        return 0;
    };
    PostMessageA(window, WM_USER, 0, 0);
    Run();
    EXPECT_EQ(told, (Lines{"destroy gone", "command 5", "ended", "command 8"}));
}

TEST_F(MessageTest, TheDefaultClosesAndColoursAndAnswersTheRestWithNothing)
{
    HWND window = Make("main");
    for (UINT message : {WM_COMMAND, WM_NOTIFY, WM_DRAWITEM, WM_PARENTNOTIFY, WM_MOUSEMOVE,
                         WM_LBUTTONDOWN, WM_SIZE, WM_USER})
        EXPECT_EQ(DefWindowProcA(window, message, 0, 0), 0) << message;
    EXPECT_EQ(DefWindowProcA(window, WM_QUERYENDSESSION, 0, 0), 1);
    HDC dc = GetDC(window);
    EXPECT_EQ(DefWindowProcA(window, WM_ERASEBKGND, (WPARAM)dc, 0), 0); // the class has no brush
    for (UINT message : {WM_CTLCOLORMSGBOX, WM_CTLCOLORBTN, WM_CTLCOLORDLG, WM_CTLCOLORSTATIC}) {
        SetTextColor(dc, RGB(1, 2, 3));
        EXPECT_EQ(DefWindowProcA(window, message, (WPARAM)dc, (LPARAM)window),
                  (LRESULT)GetSysColorBrush(COLOR_BTNFACE));
        EXPECT_EQ(SetTextColor(dc, 0), GetSysColor(COLOR_WINDOWTEXT));
        EXPECT_EQ(SetBkColor(dc, 0), GetSysColor(COLOR_BTNFACE));
    }
    EXPECT_EQ(ReleaseDC(window, dc), 1);
    for (const char *name : {"button", "static", WC_TREEVIEWA})
        EXPECT_EQ(SendMessageA(MakeControl(name, window, 5, {}), WM_SETFONT, 0, 0), 0) << name;
    told.clear();
    SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(told, (Lines{"close main", "destroy main"}));
}

TEST_F(MessageTest, TheMouseIsHeardAfterWhatIsPostedAndByTheCapture)
{
    HWND window = Make("main", nullptr, WS_POPUP | WS_VISIBLE);
    HWND tree = MakeControl(WC_TREEVIEWA, window, 5, {20, 10, 120, 90}, WS_BORDER);
    RunWaiting();
    const auto note = [](const char *what) {
        return [what](HWND, WPARAM, LPARAM place) -> LRESULT {
            return told.push_back(what + PlaceOf(place)), 0;
        };
    };
    actions[WM_LBUTTONDOWN] = note("down ");
    actions[WM_LBUTTONUP] = note("up ");
    actions[WM_LBUTTONDBLCLK] = note("double ");
    actions[WM_PARENTNOTIFY] = [](HWND, WPARAM what, LPARAM place) -> LRESULT {
        POINT cursor;
        GetCursorPos(&cursor);
        told.push_back("press " + std::to_string(LOWORD(what)) + " at " + PlaceOf(place) +
                       " cursor " + PlaceOf(MAKELPARAM(cursor.x, cursor.y)));
        return 0;
    };
    actions[WM_NOTIFY] = [](HWND, WPARAM id, LPARAM lParam) -> LRESULT {
        const auto *header = (const NMHDR *)lParam;
        if (header->code == (UINT)NM_RCLICK)
            told.push_back("right " + std::to_string(id) + "=" + std::to_string(header->idFrom));
        return 0;
    };
    actions[WM_PAINT] = [](HWND painted, WPARAM, LPARAM) -> LRESULT {
        return told.push_back("paint"), DefWindowProcA(painted, WM_PAINT, 0, 0);
    };
    told.clear();
    InvalidateRect(window, nullptr, FALSE);
    Click(tree, 3, 4, true);
    PostMessageA(window, WM_COMMAND, 1, 0);
    RunWaiting();
    EXPECT_EQ(told, (Lines{"command 1", "press 516 at 24,15 cursor 34,35", "right 5=5", "paint"}));

    told.clear();
    DoubleClick(window, 150, 60);
    RunWaiting();
    EXPECT_EQ(told, (Lines{"down 150,60", "up 150,60", "double 150,60", "up 150,60"}));

    told.clear();
    TakeInput(window, false);
    Click(window, 150, 60);
    RunWaiting();
    TakeInput(window, true);
    EXPECT_TRUE(told.empty());

    actions[WM_MOUSEMOVE] = note("move ");
    EXPECT_EQ(SetCapture(window), nullptr);
    MoveMouse(tree, 10, 20);
    RunWaiting();
    MoveMouse(window, -5, -6);
    RunWaiting();
    EXPECT_EQ(SetCapture(tree), window);
    EXPECT_TRUE(ReleaseCapture());
    MoveMouse(tree, 11, 20);
    RunWaiting();
    EXPECT_EQ(told, (Lines{"move 31,31", "move -5,-6"}));
}

TEST_F(MessageTest, ATreeTellsWhichItemIsSelectedAndNoneThatIsGone)
{
    HWND window = Make("main", nullptr, WS_POPUP | WS_VISIBLE);
    HWND tree = MakeControl(WC_TREEVIEWA, window, 5, {0, 0, 50, 50});
    bool empties = false;
    actions[WM_NOTIFY] = [&](HWND, WPARAM id, LPARAM lParam) -> LRESULT {
        const auto *change = (const NMTREEVIEWA *)lParam;
        EXPECT_EQ(id, 5u);
        EXPECT_EQ(change->hdr.idFrom, id);
        EXPECT_EQ(change->hdr.hwndFrom, tree);
        if (change->hdr.code != (UINT)TVN_SELCHANGEDA)
            return 0;
        TVITEMA item = {};
        item.mask = TVIF_PARAM;
        item.hItem = change->itemNew.hItem;
        if (empties)
            SendMessageA(tree, TVM_DELETEITEM, 0, (LPARAM)TVI_ROOT);
        if (SendMessageA(tree, TVM_GETITEMA, 0, (LPARAM)&item))
            told.push_back(std::to_string(change->itemNew.lParam) + "=" +
                           std::to_string(item.lParam));
        return 0;
    };
    told.clear();
    HTREEITEM first = InsertItem(tree, "first", TVI_ROOT, 11);
    SelectItem(tree, first);
    SelectItem(tree, InsertItem(tree, "second", TVI_ROOT, 22));
    EXPECT_EQ(told, (Lines{"11=11", "22=22"}));

    told.clear();
    SendMessageA(tree, TVM_DELETEITEM, 0, (LPARAM)TVI_ROOT);
    SelectItem(tree, first);
    empties = true;
    SelectItem(tree, InsertItem(tree, "third", TVI_ROOT, 33));
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(SendMessageA(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0), 0);
}

TEST_F(MessageTest, AButtonTellsItsParentWhenItIsReleasedInside)
{
    HWND window = Make("main", nullptr, WS_POPUP | WS_VISIBLE);
    HWND button = MakeControl("button", window, 77, {0, 0, 40, 40}, BS_OWNERDRAW);
    told.clear();
    const auto press = [button](int x, int y) {
        SendMessageA(button, WM_LBUTTONDOWN, 0, MAKELPARAM(5, 5));
        EXPECT_EQ(GetCapture(), button);
        SendMessageA(button, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
        EXPECT_EQ(GetCapture(), nullptr);
    };
    for (const POINT inside : {POINT{6, 6}, {0, 0}, {39, 39}})
        press(inside.x, inside.y);
    for (const POINT outside : {POINT{6, -1}, {-1, 6}, {40, 6}, {6, 40}})
        press(outside.x, outside.y);
    SendMessageA(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(told, Lines(3, "command 77"));
}

TEST_F(MessageTest, AnOwnerDrawnButtonThatShowsAsksForColoursAndIsDrawnByItsParent)
{
    HWND window = Make("main", nullptr, WS_POPUP);
    HWND button = MakeControl("button", window, 77, {10, 10, 52, 42}, WS_BORDER | BS_OWNERDRAW);
    unsigned drawn = 0;
    HDC asked = nullptr;
    actions[WM_CTLCOLORBTN] = [&](HWND, WPARAM dc, LPARAM control) -> LRESULT {
        EXPECT_EQ((HWND)control, button);
        asked = (HDC)dc;
        return (LRESULT)GetSysColorBrush(COLOR_BTNFACE);
    };
    actions[WM_DRAWITEM] = [&](HWND, WPARAM id, LPARAM lParam) -> LRESULT {
        const auto *item = (const DRAWITEMSTRUCT *)lParam;
        EXPECT_EQ(id, 77u);
        EXPECT_EQ(item->CtlID, 77u);
        EXPECT_EQ(item->CtlType, (UINT)ODT_BUTTON);
        EXPECT_EQ(item->itemAction, (UINT)ODA_DRAWENTIRE);
        EXPECT_EQ(item->rcItem.right, 40);
        EXPECT_EQ(item->rcItem.bottom, 30);
        EXPECT_EQ(item->hDC, asked);
        return ++drawn, TRUE;
    };
    const auto update = [&] {
        UpdateWindow(window);
        UpdateWindow(button);
        return std::exchange(drawn, 0u);
    };
    InvalidateRect(window, nullptr, TRUE);
    EXPECT_EQ(update(), 0u);
    ShowWindow(window, SW_SHOW);
    EXPECT_GE(update(), 1u);
    EXPECT_EQ(update(), 0u);
    InvalidateRect(button, nullptr, FALSE);
    EXPECT_EQ(drawn, 0u);
    EXPECT_EQ(update(), 1u);

    // What is invalid of a window is invalid of the children that show there.
    RECT outside = {0, 0, 10, 10}, over = {0, 0, 12, 12};
    InvalidateRect(window, &outside, TRUE);
    EXPECT_EQ(update(), 0u);
    InvalidateRect(window, &over, TRUE);
    EXPECT_EQ(update(), 1u);
}

} // namespace
