#include "platform/native/shell32/drops.h"

#include "platform/native/user/queue.h"
#include "platform/win32.h"

#include <gtest/gtest.h>

#include <vector>

static std::vector<std::string> dropped;

static LRESULT CALLBACK TakeDrop(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_DROPFILES)
        return DefWindowProcA(window, message, wParam, lParam);
    const HDROP drop = (HDROP)wParam;
    for (UINT i = 0; DragQueryFileA(drop, i, nullptr, 0) > 0; i++) {
        char path[5];
        EXPECT_LT(DragQueryFileA(drop, i, path, sizeof path), sizeof path);
        dropped.push_back(path);
    }
    DragFinish(drop);
    EXPECT_EQ(DragQueryFileA(drop, 0, nullptr, 0), 0u);
    return 0;
}

TEST(Drops, ReachAWindowThatTakesThem)
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = TakeDrop;
    windowClass.lpszClassName = "Drops";
    ASSERT_TRUE(RegisterClassA(&windowClass));
    const struct {
        BOOL accepts;
        DWORD style;
        std::vector<std::string> told;
    } cases[] = {{TRUE, 0, {"a", "/lon"}}, {FALSE, 0, {}}, {TRUE, WS_DISABLED, {}}};
    for (const auto &c : cases) {
        HWND window = CreateWindowExA(0, "Drops", "", WS_OVERLAPPEDWINDOW | c.style, 0, 0, 9, 9,
                                      nullptr, nullptr, nullptr, nullptr);
        DragAcceptFiles(window, c.accepts);
        ReportDrop(window, {1, 2}, {"a", "/long"});
        dropped.clear();
        MSG message;
        while (TakeMessage(&message) == Taken::Message)
            DispatchMessageA(&message);
        EXPECT_EQ(dropped, c.told);
        DestroyWindow(window);
    }
    UnregisterClassA("Drops", nullptr);
}
