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

TEST(Files, AnEmptyFileIsFilledForWhoHoldsItOpenAndNoOther)
{
    const TempFolder folder;
    OutputFolder *output = OpenFolder(folder.path.string().c_str());
    FILE *held = fopen(folder.Path("made").c_str(), "w+b");
    FILE *file = OpenEmptyFile(output, "made");
    ASSERT_NE(file, nullptr);
    fputs("content", file);
    fclose(file);
    char text[10] = "";
    EXPECT_EQ(fread(text, 1, sizeof text, held), 7u);
    fclose(held);
    folder.Write("folder/empty", {});
    for (const char *other : {"made", "missing", "folder"})
        EXPECT_EQ(OpenEmptyFile(output, other), nullptr) << other;
    CloseFolder(output);
}
