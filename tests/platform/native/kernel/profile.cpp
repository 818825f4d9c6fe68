#include "platform/win32.h"

#include "tests/support/temp_folder.h"
#include "tests/support/variable.h"

#include <gtest/gtest.h>

// The folder of the user's settings; empty when its path does not fit.
static std::string SettingsFolder()
{
    LPITEMIDLIST list = nullptr;
    char path[MAX_PATH] = "before";
    EXPECT_EQ(SHGetSpecialFolderLocation(nullptr, CSIDL_APPDATA, &list), 0);
    const BOOL fits = SHGetPathFromIDListA(list, path);
    EXPECT_EQ(fits, path[0] != 0);
    CoTaskMemFree(list);
    return path;
}

TEST(Settings, MissingFileIsLookedForSystemWide)
{
    const TempFolder folder;
    const Variable user("XDG_CONFIG_HOME", folder.path / "user/");
    const Variable system("XDG_CONFIG_DIRS",
                          "relative:" + folder.Path("first") + ":" + folder.Path("second"));
    EXPECT_EQ(SettingsFolder(), folder.Path("user"));
    const std::string file = SettingsFolder() + "/Orrindale/VLXPRO30.INI";
    const auto ask = [&] {
        char text[100];
        GetPrivateProfileStringA("Vellumax", "ApplicationPath", "none", text, 100, file.c_str());
        return std::string(text);
    };
    const auto write = [&](const char *where) {
        folder.Write(std::string(where) + "/Orrindale/VLXPRO30.INI",
                     Text(std::string("[Vellumax]\nApplicationPath=") + where));
    };
    for (const char *where : {"second", "first", "user"}) {
        write(where);
        EXPECT_EQ(ask(), where);
    }
    // A file that is there hides the others even without the value.
    folder.Write("user/Orrindale/VLXPRO30.INI", Text("[Vellumax]\n"));
    EXPECT_EQ(ask(), "none");
}

TEST(Settings, FolderIsUnderHomeUnlessTold)
{
    for (const char *told : {"", "relative"}) {
        const Variable home("HOME", "/home/ann");
        const Variable user("XDG_CONFIG_HOME", told);
        EXPECT_EQ(SettingsFolder(), "/home/ann/.config");
    }
    const Variable user("XDG_CONFIG_HOME", "/" + std::string(MAX_PATH, 'a'));
    EXPECT_EQ(SettingsFolder(), "");
}
