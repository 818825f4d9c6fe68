// Windows: their classes, their life with their parents and children, their sizes and places.
#include <algorithm>

#include "tests/support/recorder.h"

namespace
{

BOOL CALLBACK NoteVisit(HWND window, LPARAM)
{
    told.push_back(NameOf(window));
    return TRUE;
}

TEST_F(MessageTest, ADeadWindowIsRefusedEverywhere)
{
    HWND owner = Make("main"), dead = Make("dead", owner, WS_CHILD, 5);
    EXPECT_EQ(SetCapture(owner), nullptr);
    EXPECT_TRUE(DestroyWindow(dead));
    told.clear();
    RECT rect = {1, 2, 3, 4};
    POINT point = {5, 6};
    char text[] = "abc";
    for (HWND none : {dead, (HWND) nullptr}) {
        EXPECT_FALSE(DestroyWindow(none));
        EXPECT_FALSE(ShowWindow(none, SW_SHOW));
        EXPECT_FALSE(GetClientRect(none, &rect));
        EXPECT_FALSE(GetWindowRect(none, &rect));
        EXPECT_FALSE(MoveWindow(none, 1, 2, 3, 4, TRUE));
        EXPECT_FALSE(SetWindowPos(none, HWND_TOP, 1, 2, 3, 4, SWP_NOSIZE));
        EXPECT_FALSE(ClientToScreen(none, &point));
        EXPECT_FALSE(SetWindowTextA(none, "x"));
        EXPECT_EQ(GetWindowTextLengthA(none), 0);
        EXPECT_EQ(GetDlgItem(none, 5), nullptr);
        EXPECT_FALSE(SetDlgItemTextA(none, 5, "x"));
        EXPECT_EQ(GetDlgItemTextA(none, 5, text, sizeof text), 0u);
        EXPECT_STREQ(text, "");
        EXPECT_EQ(GetMenu(none), nullptr);
        EXPECT_EQ(SendMessageA(none, WM_QUERYENDSESSION, 0, 0), 0);
        EXPECT_EQ(CreateWindowExA(0, "MessageTest", "", WS_CHILD, 0, 0, 1, 1, none, nullptr,
                                  nullptr, nullptr),
                  nullptr);
    }
    EXPECT_EQ(Make("owned", dead), nullptr);
    names.erase(nullptr);
    EXPECT_EQ(LoadCursorA(nullptr, MAKEINTRESOURCEA(1)), nullptr);
    EXPECT_EQ(LoadCursorA(instance, IDC_ARROW), nullptr); // it is the system's alone
    EXPECT_EQ(LoadIconA(nullptr, MAKEINTRESOURCEA(1)), nullptr);
    HDC memory = CreateCompatibleDC(nullptr);
    EXPECT_EQ(ReleaseDC(owner, memory), 0); // no window's
    DeleteDC(memory);
    EXPECT_FALSE(InvalidateRect(dead, nullptr, TRUE));
    EXPECT_FALSE(PostMessageA(dead, WM_COMMAND, 1, 0));
    EXPECT_EQ(GetDC(dead), nullptr);
    EXPECT_EQ(ReleaseDC(dead, nullptr), 0);
    UpdateWindow(dead);
    EXPECT_EQ(SetFocus(dead), nullptr);
    EnumChildWindows(dead, NoteVisit, 0);
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(rect.left + point.x, 6);
    SetCapture(dead);
    EXPECT_EQ(GetCapture(), owner);
    DestroyWindow(owner);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_TRUE(ReleaseCapture());
}

TEST_F(MessageTest, DestructionTellsOwnedWindowsThenParentsAndThoseThatAreStillThere)
{
    const std::pair<const char *, Lines> cases[] = {
        {"nobody", {"owned", "main", "first", "inner", "second"}},
        {"main", {"owned", "main", "second", "first", "inner"}},
        {"first", {"owned", "main", "first", "second", "inner"}}};
    for (const auto &[teller, order] : cases) {
        HWND window = Make("main"), first = Make("first", window, WS_CHILD, 5);
        HWND inner = Make("inner", first, WS_CHILD, 6);
        HWND second = Make("second", window, WS_CHILD, 7), owned = Make("owned", window);
        told.clear();
        actions[WM_DESTROY] = [&](HWND gone, WPARAM, LPARAM) -> LRESULT {
            return NameOf(gone) == teller ? DestroyWindow(second) : 0;
        };
        EXPECT_TRUE(DestroyWindow(window));
        for (std::string &line : told)
            line.erase(0, std::string("destroy ").size());
        EXPECT_EQ(told, order);
        RECT rect;
        for (HWND dead : {window, first, inner, second, owned})
            EXPECT_FALSE(GetClientRect(dead, &rect));
    }
}

TEST_F(MessageTest, AWindowMayBeDestroyedInsideAnyMessage)
{
    HWND window, child, tree, button;
    HTREEITEM item;
    const struct {
        const char *what;
        UINT message;
        std::function<void()> act;
    } cases[] = {
        {"a command", WM_COMMAND, [&] { SendMessageA(window, WM_COMMAND, 1, 0); }},
        {"a click on its button", WM_COMMAND, [&] { Click(button, 3, 3), RunWaiting(); }},
        {"a press that a child is to get", WM_PARENTNOTIFY, [&] { Click(child, 3, 3, true); }},
        {"a press", WM_LBUTTONDOWN, [&] { Click(window, 190, 90); }},
        {"a selection", WM_NOTIFY, [&] { SelectItem(tree, item); }},
        {"its size", WM_SIZE, [&] { MoveWindow(window, 10, 20, 90, 80, TRUE); }},
        {"its close box", WM_SYSCOMMAND, [&] { SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0); }},
        {"a posted message", WM_USER, [&] { PostMessageA(window, WM_USER, 0, 0); }},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        window = Make("main", nullptr, WS_POPUP | WS_VISIBLE);
        child = Make("child", window, WS_CHILD | WS_VISIBLE, 5);
        MoveWindow(child, 0, 0, 20, 100, TRUE);
        tree = MakeControl(WC_TREEVIEWA, window, 6, {20, 0, 80, 100});
        button = MakeControl("button", window, 7, {80, 0, 120, 40}, BS_OWNERDRAW);
        item = InsertItem(tree, "item");
        RunWaiting();
        actions[c.message] = [&](HWND, WPARAM, LPARAM) -> LRESULT {
            return DestroyWindow(window), 0;
        };
        c.act();
        RunWaiting();
        actions.clear();
        RECT rect;
        for (HWND dead : {window, child, tree, button})
            EXPECT_FALSE(GetClientRect(dead, &rect));
        EXPECT_EQ(GetCapture(), nullptr);
    }
}

TEST_F(MessageTest, AWindowThatGoesWhileItIsMadeIsNone)
{
    for (DWORD style : {DWORD{WS_POPUP}, DWORD{WS_CHILD}}) {
        HWND parent = Make("main");
        for (bool isParents : {false, true}) {
            actions[WM_CREATE] = [&](HWND made, WPARAM, LPARAM) -> LRESULT {
                return DestroyWindow(isParents ? parent : made), 0;
            };
            EXPECT_EQ(Make("made", parent, style), nullptr);
        }
        actions.clear();
        EXPECT_FALSE(DestroyWindow(parent));
        names.clear();
    }
}

TEST_F(MessageTest, TheFirstSizeComesWhenAWindowIsMadeOrOfAFrameWhenItIsShown)
{
    actions[WM_SIZE] = [](HWND, WPARAM, LPARAM) -> LRESULT { return told.push_back("size"), 0; };
    HWND popup = Make("popup");
    told.push_back("child");
    Make("child", popup, WS_CHILD | WS_VISIBLE, 5);
    told.push_back("shown");
    EXPECT_FALSE(ShowWindow(popup, SW_SHOW));
    EXPECT_TRUE(ShowWindow(popup, SW_SHOW));
    told.push_back("frame");
    HWND frame = Make("frame", nullptr, WS_OVERLAPPEDWINDOW);
    told.push_back("shown");
    EXPECT_FALSE(ShowWindow(frame, SW_SHOWNORMAL));
    EXPECT_TRUE(ShowWindow(frame, SW_SHOWNORMAL));
    EXPECT_EQ(told, (Lines{"create", "size", "child", "create", "size", "shown", "frame", "create",
                           "shown", "size"}));
}

TEST_F(MessageTest, ChildrenAreFoundByIdAndVisitedWithTheirChildren)
{
    HWND window = Make("main");
    HWND first = Make("first", window, WS_CHILD, 5), second = Make("second", window, WS_CHILD, 6);
    HWND inner = Make("inner", first, WS_CHILD, 7);
    EXPECT_EQ(GetDlgItem(window, 6), second);
    EXPECT_EQ(GetDlgItem(window, 7), nullptr);
    EXPECT_EQ(GetDlgItem(first, 7), inner);
    told.clear();
    EnumChildWindows(window, NoteVisit, 0);
    std::sort(told.begin(), told.end());
    EXPECT_EQ(told, (Lines{"first", "inner", "second"}));

    char text[5] = "????";
    SetDlgItemTextA(window, 6, "a label");
    EXPECT_EQ(GetDlgItemTextA(window, 6, text, sizeof text), 4u);
    EXPECT_STREQ(text, "a la");
    EXPECT_EQ(GetWindowTextLengthA(second), 7);
    EXPECT_EQ(GetDlgItemTextA(window, 99, text, sizeof text), 0u);
    EXPECT_STREQ(text, "");
}

TEST_F(MessageTest, MovingSendsTheSizeOnlyWhenTheClientAreaChanges)
{
    HWND window = Make("main");
    HWND child = Make("child", window, WS_CHILD | WS_BORDER, 5);
    std::vector<LPARAM> sizes;
    actions[WM_SIZE] = [&](HWND, WPARAM, LPARAM size) -> LRESULT {
        return sizes.push_back(size), 0;
    };
    MoveWindow(child, 30, 40, 102, 52, TRUE);
    MoveWindow(child, 31, 41, 102, 52, TRUE);
    MoveWindow(child, 7, 8, -5, -1, TRUE);
    MoveWindow(child, 7, 8, 1, 0, TRUE);
    MoveWindow(child, 7, 8, 102, 52, TRUE);
    EXPECT_EQ(sizes, (std::vector<LPARAM>{MAKELPARAM(100, 50), 0, MAKELPARAM(100, 50)}));

    RECT parent, outer, client;
    POINT origin = {0, 0};
    GetWindowRect(window, &parent);
    GetWindowRect(child, &outer);
    GetClientRect(child, &client);
    ClientToScreen(child, &origin);
    EXPECT_EQ(outer.left, parent.left + 7);
    EXPECT_EQ(outer.top, parent.top + 8);
    EXPECT_EQ(outer.right - outer.left, 102);
    EXPECT_EQ(client.right, 100);
    EXPECT_EQ(client.bottom, 50);
    EXPECT_EQ(origin.x, outer.left + 1);
    EXPECT_EQ(origin.y, outer.top + 1);
}

} // namespace

TEST_F(MessageTest, APointFindsTheTopmostWindowThatShowsAndTakesInput)
{
    const POINT point = {110, 110};
    HWND below = Make("below"), above = Make("above"), child = Make("child", above, WS_CHILD, 5);
    for (HWND window : {below, above})
        MoveWindow(window, 100, 100, 50, 50, TRUE);
    MoveWindow(child, 0, 0, 50, 5, TRUE);
    EXPECT_NE(WindowFromPoint(point), below);
    for (HWND window : {below, above, child})
        ShowWindow(window, SW_SHOW);
    EXPECT_EQ(WindowFromPoint(point), above);
    MoveWindow(child, 0, 0, 50, 50, TRUE);
    EXPECT_EQ(WindowFromPoint(point), child);
    for (const POINT inside : {POINT{100, 100}, {149, 149}})
        EXPECT_EQ(WindowFromPoint(inside), child);
    for (const POINT outside : {POINT{150, 110}, {110, 150}, {99, 110}, {110, 99}})
        EXPECT_NE(WindowFromPoint(outside), child);
    TakeInput(child, false);
    EXPECT_EQ(WindowFromPoint(point), above);
    TakeInput(above, false);
    EXPECT_EQ(WindowFromPoint(point), above);
    TakeInput(above, true);
    ShowWindow(above, SW_HIDE);
    EXPECT_EQ(WindowFromPoint(point), below);
}
