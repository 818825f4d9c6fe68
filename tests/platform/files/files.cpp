#include "platform/files.h"

#include <gtest/gtest.h>

#include <string>

TEST(AddressPath, IsOneThatBrowsersOpen)
{
    const bool isLinux = pathSeparator == '/';
    EXPECT_EQ(AddressPath("/opt/a-b_c.d~/x.htm").substr(isLinux ? 0 : 1), "opt/a-b_c.d~/x.htm");
    EXPECT_EQ(AddressPath("/a #1?/50%/\xC3\xA9;x"),
              isLinux ? "a%20%231%3F/50%25/%C3%A9%3Bx" : "/a #1?/50%/\xC3\xA9;x");
    EXPECT_EQ(AddressPath("relative"), "relative");
}
