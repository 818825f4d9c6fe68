#include "platform/win32.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(UserFolder, IsAPathWithNoSeparatorAtItsEnd)
{
    LPITEMIDLIST list = nullptr;
    char path[MAX_PATH] = "";
    ASSERT_EQ(SHGetSpecialFolderLocation(nullptr, CSIDL_APPDATA, &list), 0);
    ASSERT_TRUE(SHGetPathFromIDListA(list, path));
    CoTaskMemFree(list);
    CoTaskMemFree(nullptr);
    ASSERT_NE(path[0], 0);
    EXPECT_EQ(strchr("/\\", path[strlen(path) - 1]), nullptr);
    EXPECT_FALSE(SHGetPathFromIDListA(nullptr, path));
    EXPECT_STREQ(path, "");
}
