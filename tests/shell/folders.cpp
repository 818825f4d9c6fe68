#include "shell/folders.h"

#include <gtest/gtest.h>

#include <string>

TEST(SettingsFile, HasNoPathWhenThatDoesNotFit)
{
    EXPECT_STRNE(UserSettingsPath("n"), "");
    EXPECT_STREQ(UserSettingsPath(std::string(250, 'n').c_str()), "");
}
