#include "platform/native/kernel/code_page.h"
#include "platform/native/kernel/process.h"
#include "platform/win32.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

// Writes a file into a folder.
std::string Write(const TempFolder &folder, const std::string &name, const std::string &text,
                  bool isProgram = false)
{
    std::filesystem::create_directories((folder.path / name).parent_path());
    const std::string path = folder.Write(name, Text(text));
    chmod(path.c_str(), isProgram ? 0755 : 0644);
    return path;
}

// A variable's value for one test.
struct Variable {
    std::string name;
    std::optional<std::string> before;

    Variable(const char *variable, const std::string &value) : name(variable)
    {
        if (const char *old = getenv(variable))
            before = old;
        setenv(variable, value.c_str(), 1);
    }
    ~Variable()
    {
        if (before)
            setenv(name.c_str(), before->c_str(), 1);
        else
            unsetenv(name.c_str());
    }
};

// What a program wrote to a file, once it is there.
std::string WaitForText(const std::filesystem::path &file)
{
    for (int i = 0; i < 500; i++) {
        const Bytes text = ReadFile(file);
        if (!text.empty())
            return std::string(text.begin(), text.end());
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return "";
}

// The folder of the user's settings; empty when its path does not fit.
std::string SettingsFolder()
{
    LPITEMIDLIST list = nullptr;
    char path[MAX_PATH] = "before";
    EXPECT_EQ(SHGetSpecialFolderLocation(nullptr, CSIDL_APPDATA, &list), 0);
    const BOOL fits = SHGetPathFromIDListA(list, path);
    EXPECT_EQ(fits, path[0] != 0);
    CoTaskMemFree(list);
    return path;
}

// Notes how many arguments it got and the first, in one step.
const char *const noteArguments = "#!/bin/sh\n"
                                  "printf '%s:%s' $# \"$1\" >\"$0.part\"\n"
                                  "mv \"$0.part\" \"$0.seen\"\n";

} // namespace

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
        Write(folder, std::string(where) + "/Orrindale/VLXPRO30.INI",
              std::string("[Vellumax]\nApplicationPath=") + where);
    };
    for (const char *where : {"second", "first", "user"}) {
        write(where);
        EXPECT_EQ(ask(), where);
    }
    // A file that is there hides the others even without the value.
    Write(folder, "user/Orrindale/VLXPRO30.INI", "[Vellumax]\n");
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

TEST(TemporaryFolder, IsTheUsersAloneAndGoesWithTheProcess)
{
    const TempFolder folder;
    // What killed processes left: one is stale, the others are young, in use, or someone's own.
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(2);
    for (const char *name :
         {"quillmoor-stale1", "quillmoor-young1", "quillmoor-filled", "quillmoor"}) {
        const auto path = folder.path / name;
        std::filesystem::create_directory(path);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        if (path.filename() == "quillmoor-filled")
            std::ofstream(path / "file") << "x";
        if (path.filename() != "quillmoor-young1")
            std::filesystem::last_write_time(path, old);
    }
    int told[2];
    ASSERT_EQ(pipe(told), 0);
    const pid_t child = fork();
    if (child == 0) {
        const Variable parent("TMPDIR", folder.path);
        char path[MAX_PATH];
        GetTempPathA(sizeof path, path);
        std::ofstream(std::string(path) + "left behind") << "x";
        struct stat status = {};
        stat(path, &status);
        const bool isGood = (status.st_mode & 0777) == 0700 &&
                            std::string(path).starts_with(folder.path.string() + "/");
        // Taken away, it is made anew.
        std::filesystem::remove_all(path);
        GetTempPathA(sizeof path, path);
        const bool isBack = std::filesystem::is_directory(path);
        const char answer = isGood && isBack ? 'y' : 'n';
        if (write(told[1], &answer, 1) != 1)
            _exit(1);
        exit(0);
    }
    char answer = 0;
    EXPECT_EQ(read(told[0], &answer, 1), 1);
    waitpid(child, nullptr, 0);
    close(told[0]);
    close(told[1]);
    EXPECT_EQ(answer, 'y');
    std::set<std::string> left;
    for (const auto &entry : std::filesystem::directory_iterator(folder.path))
        left.insert(entry.path().filename());
    EXPECT_EQ(left, (std::set<std::string>{"quillmoor", "quillmoor-filled", "quillmoor-young1"}));
}

TEST(Programs, AreStartedByNameWithOneArgument)
{
    const TempFolder folder;
    const Variable path("PATH", "relative::" + folder.Path("a b") + ":/usr/bin:/bin");
    const std::string browser = Write(folder, "a b/firefox", noteArguments, true);
    Write(folder, "a b/opera", "not a program");
    Write(folder, "a b/broken", "#!/no/such/interpreter\n", true);
    const char *address = "file:///a%20b#QUILM";
    for (const char *missing :
         {"opera.exe", "c:\\Program Files\\Opera\\opera.exe", "iexplore.exe", "broken", "", ".exe"})
        EXPECT_LE((INT_PTR)ShellExecuteA(nullptr, "open", missing, address, nullptr, 3), 32)
            << missing;
    EXPECT_GT((INT_PTR)ShellExecuteA(nullptr, "open", "firefox.exe", address, nullptr, 3), 32);
    EXPECT_EQ(WaitForText(browser + ".seen"), "1:" + std::string(address));
}

TEST(Programs, TheDesktopsApplicationTakesThePageAsItIs)
{
    const TempFolder folder;
    const Variable path("PATH", folder.Path("a b") + ":/usr/bin:/bin");
    const std::string page = Write(folder, "my page.htm", "<html>");
    char application[MAX_PATH];
    const std::string opener = Write(folder, "a b/xdg-open", noteArguments, true);
    Write(folder, "a b/xdg-mime", "#!/bin/sh\nexit 0\n", true);
    EXPECT_LE((INT_PTR)FindExecutableA(page.c_str(), "", application), 32);
    Write(folder, "a b/xdg-mime",
          "#!/bin/sh\n[ \"$*\" = 'query default text/html' ] && echo b.desktop\n", true);
    EXPECT_LE((INT_PTR)FindExecutableA((page + "x").c_str(), "", application), 32);
    ASSERT_GT((INT_PTR)FindExecutableA(page.c_str(), "", application), 32);
    std::string line = std::string(application) + " " + page;
    STARTUPINFOA startup = {};
    PROCESS_INFORMATION process;
    ASSERT_TRUE(CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS,
                               nullptr, nullptr, &startup, &process));
    CloseHandle(process.hProcess);
    EXPECT_EQ(WaitForText(opener + ".seen"), "1:" + page);
}
