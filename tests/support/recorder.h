// Windows that note what they are told, and do then what a test says.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tests/support/loops.h"

typedef std::vector<std::string> Lines;

inline Lines told;
inline std::map<UINT, std::function<LRESULT(HWND, WPARAM, LPARAM)>> actions; // not the default's
inline std::map<HWND, std::string> names;

inline std::string NameOf(HWND window)
{
    const auto known = names.find(window);
    return known == names.end() ? "?" : known->second;
}

inline LRESULT CALLBACK RecordingProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: told.push_back("create"); break;
    case WM_DESTROY: told.push_back("destroy " + NameOf(window)); break;
    case WM_CLOSE: told.push_back("close " + NameOf(window)); break;
    case WM_COMMAND: told.push_back("command " + std::to_string(wParam)); break;
    default: break;
    }
    const auto action = actions.find(message);
    return action != actions.end() ? action->second(window, wParam, lParam)
                                   : DefWindowProcA(window, message, wParam, lParam);
}

struct MessageTest : testing::Test {
    Loops loops;
    HINSTANCE instance = GetModuleHandleA(nullptr);

    MessageTest()
    {
        told.clear();
        actions.clear();
        names.clear();
        WNDCLASSA windowClass = {};
        windowClass.lpfnWndProc = RecordingProcedure;
        windowClass.hInstance = instance;
        windowClass.style = CS_DBLCLKS;
        windowClass.lpszClassName = "MessageTest";
        EXPECT_NE(RegisterClassA(&windowClass), 0);
    }

    ~MessageTest() override
    {
        actions.clear();
        for (const auto &[window, name] : names)
            DestroyWindow(window);
        EXPECT_TRUE(UnregisterClassA("MessageTest", instance));
        PostQuitMessage(0);
        Run();
    }

    HWND Make(const char *name, HWND parent = nullptr, DWORD style = WS_POPUP, int id = 0)
    {
        HWND window = CreateWindowExA(0, "MESSAGEtest", name, style, 10, 20, 200, 100, parent,
                                      (HMENU)(INT_PTR)id, instance, nullptr);
        names[window] = name;
        return window;
    }

    HWND MakeControl(const char *className, HWND parent, int id, const RECT &place, DWORD style = 0)
    {
        return CreateWindowExA(0, className, "text", WS_CHILD | WS_VISIBLE | style, place.left,
                               place.top, place.right - place.left, place.bottom - place.top,
                               parent, (HMENU)(INT_PTR)id, nullptr, nullptr);
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
