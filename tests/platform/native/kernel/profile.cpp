#include "platform/win32.h"

#include "tests/support/temp_folder.h"
#include "tests/support/variable.h"

#include <gtest/gtest.h>

#include <fstream>
#include <pwd.h>
#include <unistd.h>

namespace fs = std::filesystem;

// The folder of the user's settings; empty when its path does not fit.
static std::string SettingsFolder()
{
    LPITEMIDLIST list = nullptr;
    char path[MAX_PATH] = "";
    const bool fits = SHGetSpecialFolderLocation(nullptr, CSIDL_APPDATA, &list) == 0;
    EXPECT_EQ(SHGetPathFromIDListA(list, path), fits);
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
    std::string file = SettingsFolder() + "/Orrindale/VLXPRO30.INI";
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
    // A path that had no room is one of a file that is missing; the current folder is never asked.
    file = "";
    EXPECT_EQ(ask(), "first");
    const fs::path before = fs::current_path();
    fs::current_path(folder.path / "first");
    file = "Orrindale/VLXPRO30.INI";
    EXPECT_EQ(ask(), "none");
    fs::current_path(before);
}

TEST(Settings, BesideTheProgramNameItsFolder)
{
    const TempFolder folder;
    const Variable user("XDG_CONFIG_HOME", folder.path / "user");
    const Variable system("XDG_CONFIG_DIRS", folder.path / "system");
    const fs::path program = fs::read_symlink("/proc/self/exe").parent_path();
    const auto ask = [&](const fs::path &where, const char *value) {
        fs::create_directories(where / "Orrindale");
        std::ofstream(where / "Orrindale/TEST.INI") << "[a]\nk=" << value;
        char text[1000];
        GetPrivateProfileStringA("a", "k", "", text, sizeof text,
                                 folder.Path("user/Orrindale/TEST.INI").c_str());
        return std::string(text);
    };
    EXPECT_EQ(ask(program, "$ORIGIN"), program);
    EXPECT_EQ(ask(program, "$ORIGIN/below"), program / "below");
    EXPECT_EQ(ask(program, "$ORIGINAL"), "$ORIGINAL");
    fs::remove_all(program / "Orrindale");
    EXPECT_EQ(ask(folder.path / "system", "$ORIGIN"), "$ORIGIN");
}

TEST(Settings, FolderIsUnderHomeUnlessTold)
{
    for (const auto &[told, folder] :
         {std::pair("", "/home/ann/.config"), {"relative", "/home/ann/.config"}, {"/", "/"}}) {
        const Variable home("HOME", "/home/ann");
        const Variable user("XDG_CONFIG_HOME", told);
        EXPECT_EQ(SettingsFolder(), folder);
    }
    const Variable user("XDG_CONFIG_HOME", "/" + std::string(MAX_PATH, 'a'));
    EXPECT_EQ(SettingsFolder(), "");
    // With no home told either, under the one that the system keeps for the user.
    const Variable none("XDG_CONFIG_HOME", ""), home("HOME", "relative");
    EXPECT_EQ(SettingsFolder(), std::string(getpwuid(getuid())->pw_dir) + "/.config");
}
