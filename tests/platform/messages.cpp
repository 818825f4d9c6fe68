// Windows and their messages: what is sent when, in which order, and what outlives what.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tests/platform/loops.h"
#include "tests/support/canvas.h"

namespace
{

// What the test's windows got, and what they do then.
std::vector<std::string> told;
std::map<UINT, std::function<LRESULT(HWND, WPARAM, LPARAM)>> actions;
std::map<HWND, std::string> names;

std::string NameOf(HWND window)
{
    const auto known = names.find(window);
    return known == names.end() ? "?" : known->second;
}

LRESULT CALLBACK TestProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: told.push_back("create"); break;
    case WM_DESTROY: told.push_back("destroy " + NameOf(window)); break;
    case WM_CLOSE: told.push_back("close " + NameOf(window)); break;
    case WM_COMMAND:
        told.push_back("command " + std::to_string(LOWORD(wParam)) + "." +
                       std::to_string(HIWORD(wParam)));
        break;
    default: break;
    }
    const auto action = actions.find(message);
    if (action != actions.end())
        return action->second(window, wParam, lParam);
    return DefWindowProcA(window, message, wParam, lParam);
}

BOOL CALLBACK NoteVisit(HWND window, LPARAM)
{
    told.push_back(NameOf(window));
    return TRUE;
}

struct MessageTest : testing::Test {
    Loops loops;

    MessageTest()
    {
        told.clear();
        actions.clear();
        names.clear();
        WNDCLASSA windowClass = {};
        windowClass.lpfnWndProc = TestProcedure;
        windowClass.hInstance = GetModuleHandleA(nullptr);
        windowClass.style = CS_DBLCLKS;
        windowClass.lpszClassName = "MessageTest";
        EXPECT_NE(RegisterClassA(&windowClass), 0);
    }

    ~MessageTest() override
    {
        actions.clear();
        for (const auto &[window, name] : names)
            DestroyWindow(window);
        EXPECT_TRUE(UnregisterClassA("MessageTest", GetModuleHandleA(nullptr)));
        MSG message;
        PostQuitMessage(0);
        while (GetMessageA(&message, nullptr, 0, 0))
            DispatchMessageA(&message);
    }

    HWND Make(const char *name, HWND parent = nullptr, DWORD style = WS_POPUP, int id = 0)
    {
        HWND window = CreateWindowExA(0, "MESSAGEtest", name, style, 10, 20, 200, 100, parent,
                                      (HMENU)(INT_PTR)id, GetModuleHandleA(nullptr), nullptr);
        names[window] = name;
        return window;
    }

    // Runs the message loop to the quit request.
    void Run()
    {
        MSG message;
        while (GetMessageA(&message, nullptr, 0, 0)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
};

typedef std::vector<std::string> Lines;

std::string PlaceOf(LPARAM place)
{
    return std::to_string((int16_t)LOWORD(place)) + "," + std::to_string((int16_t)HIWORD(place));
}

TEST_F(MessageTest, PostedMessagesComeInTheirOrderAndTheQuitRequestAfterThem)
{
    HWND window = Make("main", nullptr, WS_POPUP | WS_VISIBLE);
    RunWaiting();
    actions[WM_LBUTTONDOWN] = [](HWND, WPARAM, LPARAM) -> LRESULT {
        return told.push_back("press"), 0;
    };
    told.clear();
    Click(window, 5, 5);
    PostMessageA(window, WM_COMMAND, 1, 0);
    PostQuitMessage(0);
    PostMessageA(window, WM_COMMAND, 2, 0);
    SendMessageA(window, WM_COMMAND, 3, 0);
    Run();
    EXPECT_EQ(told, (Lines{"command 3.0", "command 1.0", "command 2.0"}));
    RunWaiting();
    EXPECT_EQ(told.back(), "press");
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
    EXPECT_EQ(told, (Lines{"destroy gone", "command 5.0", "ended", "command 8.0"}));
}

TEST_F(MessageTest, TheCloseBoxClosesAndDestroysTheWindow)
{
    HWND window = Make("main");
    told.clear();
    SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(told, (Lines{"close main", "destroy main"}));
}

TEST_F(MessageTest, WhatIsLeftToTheDefaultIsAnsweredWithNothing)
{
    HWND window = Make("main");
    for (UINT message : {WM_COMMAND, WM_NOTIFY, WM_DRAWITEM, WM_PARENTNOTIFY, WM_MOUSEMOVE,
                         WM_LBUTTONDOWN, WM_SIZE, WM_USER})
        EXPECT_EQ(DefWindowProcA(window, message, 0, 0), 0) << message;
    EXPECT_EQ(DefWindowProcA(window, WM_QUERYENDSESSION, 0, 0), 1);
    HDC dc = GetDC(window);
    EXPECT_EQ(DefWindowProcA(window, WM_ERASEBKGND, (WPARAM)dc, 0), 0); // the class has no brush
    for (UINT message : {WM_CTLCOLORMSGBOX, WM_CTLCOLORBTN, WM_CTLCOLORDLG, WM_CTLCOLORSTATIC}) {
        EXPECT_NE(DefWindowProcA(window, message, (WPARAM)dc, (LPARAM)window), 0) << message;
        EXPECT_EQ(SetTextColor(dc, 0x123456), GetSysColor(COLOR_WINDOWTEXT));
    }
    EXPECT_EQ(ReleaseDC(window, dc), 1);
}

TEST_F(MessageTest, TheClassesBrushFillsTheClientAreaByDefault)
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = "BrushTest";
    ASSERT_NE(RegisterClassA(&windowClass), 0);
    HWND window = CreateWindowExA(0, "BrushTest", "", WS_POPUP, 0, 0, 3, 2, nullptr, nullptr,
                                  nullptr, nullptr);
    Canvas canvas(4, 3, RGB(255, 0, 0));
    EXPECT_NE(SendMessageA(window, WM_ERASEBKGND, (WPARAM)canvas.dc, 0), 0);
    EXPECT_EQ(canvas.At(0, 0), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(canvas.At(2, 1), GetSysColor(COLOR_BTNFACE));
    DestroyWindow(window);
    EXPECT_TRUE(UnregisterClassA("BrushTest", nullptr));
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
    EXPECT_FALSE(InvalidateRect(dead, nullptr, TRUE));
    EXPECT_FALSE(PostMessageA(dead, WM_COMMAND, 1, 0));
    EXPECT_EQ(GetDC(dead), nullptr);
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

TEST_F(MessageTest, DestructionTellsParentsFirstAndOwnedWindowsGoWithTheirOwner)
{
    HWND window = Make("main");
    HWND child = Make("child", window, WS_CHILD, 5);
    HWND grandchild = Make("grandchild", child, WS_CHILD, 6);
    HWND owned = Make("owned", window);
    told.clear();
    EXPECT_TRUE(DestroyWindow(window));
    EXPECT_EQ(told,
              (Lines{"destroy owned", "destroy main", "destroy child", "destroy grandchild"}));
    RECT rect;
    for (HWND dead : {window, child, grandchild, owned})
        EXPECT_FALSE(GetClientRect(dead, &rect));
}

TEST_F(MessageTest, ChildrenMayGoBeforeTheirTurn)
{
    HWND window = Make("main"), first = Make("first", window, WS_CHILD, 5);
    HWND second = Make("second", window, WS_CHILD, 6);
    for (HWND teller : {window, first}) {
        told.clear();
        actions[WM_DESTROY] = [&](HWND gone, WPARAM, LPARAM) -> LRESULT {
            if (gone == teller)
                DestroyWindow(second);
            return 0;
        };
        DestroyWindow(window);
        EXPECT_EQ(told, teller == window
                            ? (Lines{"destroy main", "destroy second", "destroy first"})
                            : (Lines{"destroy main", "destroy first", "destroy second"}));
        window = Make("main"), first = Make("first", window, WS_CHILD, 5);
        second = Make("second", window, WS_CHILD, 6);
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
        {"its picture", WM_DRAWITEM, [&] { InvalidateRect(button, nullptr, TRUE); }},
        {"its size", WM_SIZE, [&] { MoveWindow(window, 10, 20, 90, 80, TRUE); }},
        {"its close box", WM_SYSCOMMAND, [&] { SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0); }},
        {"a posted message", WM_USER, [&] { PostMessageA(window, WM_USER, 0, 0); }},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        window = Make("main", nullptr, WS_POPUP | WS_VISIBLE);
        child = Make("child", window, WS_CHILD | WS_VISIBLE, 5);
        MoveWindow(child, 0, 0, 20, 100, TRUE);
        tree = CreateWindowExA(0, WC_TREEVIEWA, "", WS_CHILD | WS_VISIBLE, 20, 0, 60, 100, window,
                               (HMENU)6, nullptr, nullptr);
        button = CreateWindowExA(0, "button", "", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 80, 0, 40,
                                 40, window, (HMENU)7, nullptr, nullptr);
        TVINSERTSTRUCTA insertion = {};
        insertion.hParent = TVI_ROOT;
        insertion.hInsertAfter = TVI_SORT;
        item = (HTREEITEM)SendMessageA(tree, TVM_INSERTITEM, 0, (LPARAM)&insertion);
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

TEST_F(MessageTest, AClassIsRegisteredOnceAndStaysWhileAWindowLives)
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = TestProcedure;
    windowClass.lpszClassName = "messageTEST";
    windowClass.hInstance = GetModuleHandleA(nullptr);
    EXPECT_EQ(RegisterClassA(&windowClass), 0);
    for (LPCSTR name : {"", (LPCSTR) nullptr}) {
        windowClass.lpszClassName = name;
        EXPECT_EQ(RegisterClassA(&windowClass), 0);
    }
    HWND window = Make("main");
    EXPECT_FALSE(UnregisterClassA("MessageTest", GetModuleHandleA(nullptr)));
    DestroyWindow(window);
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

TEST_F(MessageTest, TheWindowAtAPointIsTheInnermostThatShows)
{
    HWND window = Make("main", nullptr, WS_POPUP | WS_VISIBLE);
    HWND shown = Make("shown", window, WS_CHILD | WS_VISIBLE, 5);
    HWND hidden = Make("hidden", window, WS_CHILD, 6);
    SetWindowPos(window, HWND_TOP, 10, 20, 0, 0, SWP_NOSIZE);
    MoveWindow(shown, 0, 0, 50, 100, FALSE);
    MoveWindow(hidden, 50, 0, 50, 100, FALSE);
    EXPECT_EQ(WindowFromPoint({15, 30}), shown);
    EXPECT_EQ(WindowFromPoint({65, 30}), window);
    EXPECT_NE(WindowFromPoint({500, 400}), window);
}

// --- input ---

TEST_F(MessageTest, TheMouseIsHeardAfterWhatIsPostedAndByTheCapture)
{
    HWND window = Make("main", nullptr, WS_POPUP | WS_VISIBLE);
    HWND tree = CreateWindowExA(0, WC_TREEVIEWA, "", WS_CHILD | WS_VISIBLE | WS_BORDER, 20, 10, 100,
                                80, window, (HMENU)5, nullptr, nullptr);
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
    told.clear();
    Click(tree, 3, 4, true);
    PostMessageA(window, WM_COMMAND, 1, 0);
    RunWaiting();
    EXPECT_EQ(told, (Lines{"command 1.0", "press 516 at 24,15 cursor 34,35", "right 5=5"}));

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

TEST_F(MessageTest, ControlsTakeAFontThatStaysTheCallersAndTheMouseACursor)
{
    HWND window = Make("main");
    HFONT font = CreateFontA(14, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "MS Sans Serif");
    for (LPCSTR name : {WC_TREEVIEWA, "static", "button", "MessageTest"}) {
        HWND child = CreateWindowExA(0, name, "text", WS_CHILD, 0, 0, 40, 20, window, (HMENU)5,
                                     nullptr, nullptr);
        EXPECT_EQ(SendMessageA(child, WM_SETFONT, (WPARAM)font, 0), 0) << name;
        EXPECT_EQ(GetWindowTextLengthA(child), 4) << name;
    }
    EXPECT_TRUE(DeleteObject(font));

    HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW), wait = LoadCursorA(nullptr, IDC_WAIT);
    SetCursor(arrow);
    EXPECT_EQ(SetCursor(wait), arrow);
    EXPECT_EQ(SetCursor(arrow), wait);
}

TEST_F(MessageTest, TheKeyboardIsTakenFromOneWindowAndGivenToAnother)
{
    HWND window = Make("main", nullptr, WS_POPUP | WS_VISIBLE);
    HWND child = Make("child", window, WS_CHILD | WS_VISIBLE, 5);
    SetFocus(window);
    for (UINT message : {WM_SETFOCUS, WM_KILLFOCUS})
        actions[message] = [message](HWND which, WPARAM other, LPARAM) -> LRESULT {
            return told.push_back((message == WM_SETFOCUS ? "has " : "loses ") + NameOf(which) +
                                  " " + NameOf((HWND)other)),
                   0;
        };
    told.clear();
    EXPECT_EQ(SetFocus(child), window);
    EXPECT_EQ(SetFocus(child), child);
    EXPECT_EQ(told, (Lines{"loses main child", "has child main"}));
}

TEST_F(MessageTest, ATreeTellsWhichItemIsSelectedAndNoneThatIsGone)
{
    HWND window = Make("main", nullptr, WS_POPUP | WS_VISIBLE);
    HWND tree = CreateWindowExA(0, WC_TREEVIEWA, "", WS_CHILD | WS_VISIBLE, 0, 0, 50, 50, window,
                                (HMENU)5, nullptr, nullptr);
    const auto insert = [tree](const char *label, LPARAM value, HTREEITEM parent = TVI_ROOT) {
        TVINSERTSTRUCTA insertion = {};
        insertion.hParent = parent;
        insertion.hInsertAfter = TVI_SORT;
        insertion.item.mask = TVIF_TEXT | TVIF_PARAM;
        insertion.item.pszText = const_cast<LPSTR>(label);
        insertion.item.lParam = value;
        return (HTREEITEM)SendMessageA(tree, TVM_INSERTITEMA, 0, (LPARAM)&insertion);
    };
    bool empties = false;
    actions[WM_NOTIFY] = [&](HWND, WPARAM id, LPARAM lParam) -> LRESULT {
        const auto *change = (const NMTREEVIEWA *)lParam;
        if (change->hdr.code != (UINT)TVN_SELCHANGEDA)
            return 0;
        EXPECT_EQ(change->hdr.idFrom, id);
        EXPECT_EQ(change->hdr.hwndFrom, tree);
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
    HTREEITEM first = insert("first", 11), second = insert("second", 22);
    SelectItem(tree, first);
    SelectItem(tree, second);
    EXPECT_EQ(told, (Lines{"11=11", "22=22"}));
    insert("child", 12, first);
    const auto noteSelections = actions[WM_NOTIFY];
    for (UINT code : {(UINT)TVN_ITEMEXPANDEDA, (UINT)TVN_KEYDOWN, (UINT)NM_CLICK, (UINT)NM_DBLCLK,
                      (UINT)NM_SETFOCUS, (UINT)NM_KILLFOCUS}) {
        int times = 0;
        actions[WM_NOTIFY] = [&](HWND, WPARAM id, LPARAM lParam) -> LRESULT {
            const auto *header = (const NMHDR *)lParam;
            times += id == 5 && header->code == code && header->hwndFrom == tree;
            return 0;
        };
        if (code == (UINT)NM_SETFOCUS || code == (UINT)NM_KILLFOCUS) {
            SetFocus(code == (UINT)NM_SETFOCUS ? window : tree);
            times = 0;
            SetFocus(code == (UINT)NM_SETFOCUS ? tree : window);
        } else {
            ActInTree(tree, code);
        }
        RunWaiting();
        EXPECT_EQ(times, 1) << (int)code;
    }
    actions[WM_NOTIFY] = noteSelections;
    told.clear();
    SendMessageA(tree, TVM_DELETEITEM, 0, (LPARAM)TVI_ROOT);
    SelectItem(tree, first);
    empties = true;
    SelectItem(tree, insert("third", 33));
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(SendMessageA(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0), 0);
}

TEST_F(MessageTest, AButtonTellsItsParentWhenItIsReleasedInside)
{
    HWND window = Make("main", nullptr, WS_POPUP | WS_VISIBLE);
    HWND button = CreateWindowExA(0, "button", "", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 0, 0, 40,
                                  40, window, (HMENU)77, nullptr, nullptr);
    told.clear();
    const auto press = [button](int x, int y) {
        SendMessageA(button, WM_LBUTTONDOWN, 0, MAKELPARAM(5, 5));
        EXPECT_EQ(GetCapture(), button);
        SendMessageA(button, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
        EXPECT_EQ(GetCapture(), nullptr);
    };
    press(6, 6);
    press(6, -3);
    press(41, 6);
    SendMessageA(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(told, (Lines{"command 77.0"}));
}

// --- painting ---

struct Drawn {
    UINT message;
    UINT id;
    UINT action;
    RECT rect;
    bool sameContext;
};

TEST_F(MessageTest, AnOwnerDrawnButtonAsksForColoursAndIsDrawnByItsParent)
{
    HWND window = Make("main", nullptr, WS_POPUP | WS_VISIBLE);
    HWND button = CreateWindowExA(0, "button", "", WS_CHILD | WS_VISIBLE | WS_BORDER | BS_OWNERDRAW,
                                  10, 10, 42, 32, window, (HMENU)77, nullptr, nullptr);
    std::vector<Drawn> drawn;
    HDC asked = nullptr;
    actions[WM_CTLCOLORBTN] = [&](HWND, WPARAM dc, LPARAM control) -> LRESULT {
        EXPECT_EQ((HWND)control, button);
        asked = (HDC)dc;
        return (LRESULT)GetSysColorBrush(COLOR_BTNFACE);
    };
    actions[WM_DRAWITEM] = [&](HWND, WPARAM id, LPARAM lParam) -> LRESULT {
        const auto *item = (const DRAWITEMSTRUCT *)lParam;
        EXPECT_EQ(id, 77u);
        EXPECT_EQ(item->CtlType, (UINT)ODT_BUTTON);
        drawn.push_back({0, item->CtlID, item->itemAction, item->rcItem, item->hDC == asked});
        return TRUE;
    };
    UpdateWindow(window);
    UpdateWindow(button);
    drawn.clear();
    UpdateWindow(button);
    EXPECT_TRUE(drawn.empty());
    InvalidateRect(button, nullptr, FALSE);
    EXPECT_TRUE(drawn.empty());
    UpdateWindow(button);
    ASSERT_EQ(drawn.size(), 1u);
    EXPECT_EQ(drawn[0].id, 77u);
    EXPECT_EQ(drawn[0].action, (UINT)ODA_DRAWENTIRE);
    EXPECT_EQ(drawn[0].rect.right, 40);
    EXPECT_EQ(drawn[0].rect.bottom, 30);
    EXPECT_TRUE(drawn[0].sameContext);

    // What is invalid of a window is invalid of the children that show there.
    RECT outside = {0, 0, 10, 10}, over = {0, 0, 12, 12};
    InvalidateRect(window, &outside, TRUE);
    UpdateWindow(window);
    UpdateWindow(button);
    EXPECT_EQ(drawn.size(), 1u);
    InvalidateRect(window, &over, TRUE);
    UpdateWindow(window);
    UpdateWindow(button);
    EXPECT_EQ(drawn.size(), 2u);

    // Painting waits until no message is left.
    InvalidateRect(button, nullptr, FALSE);
    PostMessageA(window, WM_COMMAND, 1, 0);
    actions[WM_COMMAND] = [&](HWND, WPARAM, LPARAM) -> LRESULT {
        EXPECT_EQ(drawn.size(), 2u);
        return 0;
    };
    MSG message;
    while (drawn.size() == 2 && GetMessageA(&message, nullptr, 0, 0))
        DispatchMessageA(&message);
    EXPECT_EQ(drawn.size(), 3u);
}

TEST_F(MessageTest, AHiddenWindowIsNotPainted)
{
    HWND window = Make("main", nullptr, WS_POPUP);
    CreateWindowExA(0, "button", "", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 0, 0, 40, 40, window,
                    (HMENU)77, nullptr, nullptr);
    int drawn = 0;
    actions[WM_DRAWITEM] = [&](HWND, WPARAM, LPARAM) -> LRESULT { return ++drawn; };
    InvalidateRect(window, nullptr, TRUE);
    UpdateWindow(window);
    EXPECT_EQ(drawn, 0);
    ShowWindow(window, SW_SHOW);
    UpdateWindow(GetDlgItem(window, 77));
    EXPECT_EQ(drawn, 1);
}

} // namespace
