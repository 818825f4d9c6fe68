// Menus: the program's own, by way of a window's class, and popup menus.
#include <gtest/gtest.h>

#include "platform/win32.h"
#include "program/ids.h"

namespace
{

TEST(Menu, OfAClassCarriesTheStatesOfItsResource)
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszMenuName = "mainMENU";
    windowClass.lpszClassName = "MenuTest";
    ASSERT_NE(RegisterClassA(&windowClass), 0);
    HWND window = CreateWindowExA(0, "MenuTest", "", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr,
                                  nullptr, windowClass.hInstance, nullptr);
    HMENU menu = GetMenu(window);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(GetMenuState(menu, IDM_OPEN, MF_BYCOMMAND) & MF_GRAYED, (UINT)MF_ENABLED);
    EXPECT_EQ(GetMenuState(menu, 12345, MF_BYCOMMAND), (UINT)-1);

    EXPECT_EQ((UINT)EnableMenuItem(menu, IDM_PLAY, MF_ENABLED), (UINT)MF_GRAYED);
    EXPECT_EQ((UINT)EnableMenuItem(menu, IDM_PLAY, MF_ENABLED), (UINT)MF_ENABLED);
    EXPECT_EQ(GetMenuState(menu, IDM_PLAY, MF_BYCOMMAND) & MF_GRAYED, (UINT)MF_ENABLED);
    EXPECT_EQ(EnableMenuItem(menu, 12345, MF_ENABLED), -1);

    EnableMenuItem(menu, IDM_PLAY, MF_DISABLED);
    EXPECT_EQ(GetMenuState(menu, IDM_PLAY, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED),
              (UINT)MF_DISABLED);

    DestroyWindow(window);
    EXPECT_FALSE(DestroyMenu(menu));
    EXPECT_EQ(GetMenu(window), nullptr);
    EXPECT_EQ(GetMenuState(menu, IDM_PLAY, MF_BYCOMMAND), (UINT)-1);
    EXPECT_EQ(EnableMenuItem(menu, IDM_PLAY, MF_ENABLED), -1);
    EXPECT_TRUE(UnregisterClassA("MenuTest", windowClass.hInstance));
}

TEST(Menu, PopupMenusAreFilledAndDestroyed)
{
    HMENU menu = CreatePopupMenu();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(AppendMenuA(menu, MF_GRAYED, 102, "Save &as..."));
    EXPECT_TRUE(AppendMenuA(menu, MF_ENABLED, 103, "&Play"));
    EXPECT_EQ(GetMenuState(menu, 102, MF_BYCOMMAND) & MF_GRAYED, (UINT)MF_GRAYED);
    EXPECT_EQ(GetMenuState(menu, 103, MF_BYCOMMAND) & MF_GRAYED, (UINT)MF_ENABLED);
    EXPECT_EQ(GetMenuState(menu, 104, MF_BYCOMMAND), (UINT)-1);
    EXPECT_FALSE(TrackPopupMenu(menu, 0, 0, 0, 0, nullptr, nullptr)); // for nobody
    EXPECT_TRUE(DestroyMenu(menu));
    EXPECT_FALSE(DestroyMenu(menu));
    EXPECT_FALSE(AppendMenuA(menu, MF_ENABLED, 1, "x"));
    EXPECT_FALSE(TrackPopupMenu(menu, 0, 0, 0, 0, nullptr, nullptr));
}

} // namespace
