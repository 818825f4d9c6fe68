#include "shell/folders.h"

#include "platform/files.h"

#include <gtest/gtest.h>

#include <string>

TEST(SettingsFile, LiesInTheUsersFolderAndIsNotCut)
{
    const std::string separator(1, pathSeparator);
    const std::string path = UserSettingsPath("VLXPRO30.INI");
    const std::string end = separator + "Orrindale" + separator + "VLXPRO30.INI";
    ASSERT_GT(path.size(), end.size());
    EXPECT_EQ(path.substr(path.size() - end.size()), end);
    EXPECT_STREQ(UserSettingsPath(std::string(250, 'n').c_str()), "");
}
