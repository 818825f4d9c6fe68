// Windows and their messages: what is sent when, in which order, and what outlives what.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tests/platform/loops.h"

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

TEST_F(MessageTest, PostedMessagesComeInTheirOrderAndTheQuitRequestAfterThem)
{
    HWND window = Make("main");
    told.clear();
    PostMessageA(window, WM_COMMAND, 1, 0);
    PostQuitMessage(0);
    PostMessageA(window, WM_COMMAND, 2, 0);
    SendMessageA(window, WM_COMMAND, 3, 0);
    Run();
    EXPECT_EQ(told, (Lines{"command 3.0", "command 1.0", "command 2.0"}));
}

TEST_F(MessageTest, TheCloseBoxClosesAndDestroysTheWindow)
{
    HWND window = Make("main");
    told.clear();
    SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(told, (Lines{"close main", "destroy main"}));
    EXPECT_FALSE(PostMessageA(window, WM_COMMAND, 1, 0));
    EXPECT_EQ(SendMessageA(window, WM_QUERYENDSESSION, 0, 0), 0);
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
    for (HWND dead : {window, child, grandchild, owned}) {
        EXPECT_FALSE(GetClientRect(dead, &rect));
        EXPECT_FALSE(DestroyWindow(dead));
    }
}

TEST_F(MessageTest, AWindowMayBeDestroyedInsideItsOwnMessage)
{
    HWND window = Make("main");
    HWND child = Make("child", window, WS_CHILD, 5);
    actions[WM_COMMAND] = [&](HWND, WPARAM, LPARAM) -> LRESULT {
        DestroyWindow(window);
        return 7;
    };
    EXPECT_EQ(SendMessageA(child, WM_COMMAND, 1, 0), 7);
    EXPECT_EQ(GetDlgItem(window, 5), nullptr);
}

TEST_F(MessageTest, CreationCanBeRefused)
{
    actions[WM_CREATE] = [](HWND, WPARAM, LPARAM) -> LRESULT { return -1; };
    EXPECT_EQ(Make("main"), nullptr);
    names.clear();
}

TEST_F(MessageTest, AClassIsRegisteredOnceAndStaysWhileAWindowLives)
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = TestProcedure;
    windowClass.lpszClassName = "messageTEST";
    windowClass.hInstance = GetModuleHandleA(nullptr);
    EXPECT_EQ(RegisterClassA(&windowClass), 0);
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
    SetWindowPos(child, HWND_TOP, 7, 8, 1, 1, SWP_NOSIZE);
    EXPECT_EQ(sizes, std::vector<LPARAM>{MAKELPARAM(100, 50)});

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
