#include "platform/files.h"
#include "platform/win32.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

TEST(AddressPath, IsOneThatBrowsersOpen)
{
    const bool isLinux = pathSeparator == '/';
    EXPECT_EQ(AddressPath("/opt/a-b_c.d~/x.htm").substr(isLinux ? 0 : 1), "opt/a-b_c.d~/x.htm");
    EXPECT_EQ(AddressPath("/a #1?/50%/\xC3\xA9;x"),
              isLinux ? "a%20%231%3F/50%25/%C3%A9%3Bx" : "/a #1?/50%/\xC3\xA9;x");
    EXPECT_EQ(AddressPath("relative"), "relative");
}

TEST(CurrentFolder, IsNoPlaceToFindProgramsOnceItWasLeft)
{
    const TempFolder folder;
    const fs::path ofWindows = "C:\\windows\\system32\\hostname.exe";
    for (const char *planted : {"quillmoor-planted", "quillmoor-planted.exe"})
        fs::copy_file(fs::exists(ofWindows) ? ofWindows : "/bin/true", folder.path / planted);
    const auto before = fs::current_path();
    fs::current_path(folder.path);
    CurrentFolder *left = LeaveCurrentFolder();
    ASSERT_NE(left, nullptr);
    for (const char *name : {"quillmoor-planted.exe", "quillmoor-planted"})
        EXPECT_LE((INT_PTR)ShellExecuteA(nullptr, "open", name, "", nullptr, SW_HIDE), 32) << name;
    EXPECT_NE(fs::current_path(), folder.path);
    ReturnToFolder(left);
    EXPECT_EQ(fs::current_path(), fs::canonical(folder.path));
    fs::current_path(before);
}
