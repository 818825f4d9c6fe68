#include "platform/native/kernel/code_page.h"
#include "platform/native/kernel/process.h"
#include "platform/win32.h"

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

// A folder of one test.
struct Folder {
    std::filesystem::path path;

    Folder()
    {
        char name[] = "/tmp/quillmoor test XXXXXX";
        path = mkdtemp(name);
    }
    ~Folder()
    {
        std::filesystem::remove_all(path);
    }
    std::string Write(const std::string &name, const std::string &text, bool isProgram = false)
    {
        const std::filesystem::path file = path / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << text;
        chmod(file.c_str(), isProgram ? 0755 : 0644);
        return file;
    }
};

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
        std::ifstream in(file);
        const std::string text((std::istreambuf_iterator<char>(in)), {});
        if (!text.empty())
            return text;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return "";
}

// Notes how many arguments it got and the first, in one step.
const char *const noteArguments = "#!/bin/sh\n"
                                  "printf '%s:%s' $# \"$1\" >\"$0.part\"\n"
                                  "mv \"$0.part\" \"$0.seen\"\n";

} // namespace

TEST(Settings, MissingFileIsLookedForSystemWide)
{
    Folder folder;
    const Variable user("XDG_CONFIG_HOME", folder.path / "user/");
    const Variable system("XDG_CONFIG_DIRS", "relative:" + (folder.path / "first").string() + ":" +
                                                 (folder.path / "second").string());
    LPITEMIDLIST list = nullptr;
    char path[MAX_PATH];
    ASSERT_EQ(SHGetSpecialFolderLocation(nullptr, CSIDL_APPDATA, &list), 0);
    ASSERT_TRUE(SHGetPathFromIDListA(list, path));
    CoTaskMemFree(list);
    EXPECT_EQ(std::string(path), (folder.path / "user").string());
    const std::string file = std::string(path) + "/Orrindale/VLXPRO30.INI";
    const auto ask = [&] {
        char text[100];
        GetPrivateProfileStringA("Vellumax", "ApplicationPath", "none", text, 100, file.c_str());
        return std::string(text);
    };
    const auto write = [&](const char *where) {
        folder.Write(std::string(where) + "/Orrindale/VLXPRO30.INI",
                     std::string("[Vellumax]\nApplicationPath=") + where);
    };
    write("second");
    EXPECT_EQ(ask(), "second");
    write("first");
    EXPECT_EQ(ask(), "first");
    write("user");
    EXPECT_EQ(ask(), "user");
    // A file that is there hides the others even without the value.
    folder.Write("user/Orrindale/VLXPRO30.INI", "[Vellumax]\n");
    EXPECT_EQ(ask(), "none");
}

TEST(Settings, FolderIsUnderHomeUnlessTold)
{
    for (const char *told : {"", "relative"}) {
        const Variable home("HOME", "/home/ann");
        const Variable user("XDG_CONFIG_HOME", told);
        LPITEMIDLIST list = nullptr;
        char path[MAX_PATH];
        ASSERT_EQ(SHGetSpecialFolderLocation(nullptr, CSIDL_APPDATA, &list), 0);
        ASSERT_TRUE(SHGetPathFromIDListA(list, path));
        EXPECT_STREQ(path, "/home/ann/.config");
        CoTaskMemFree(list);
    }
    const Variable user("XDG_CONFIG_HOME", "/" + std::string(MAX_PATH, 'a'));
    LPITEMIDLIST list = nullptr;
    char path[MAX_PATH] = "before";
    SHGetSpecialFolderLocation(nullptr, CSIDL_APPDATA, &list);
    EXPECT_FALSE(SHGetPathFromIDListA(list, path));
    EXPECT_STREQ(path, "");
    CoTaskMemFree(list);
}

TEST(TemporaryFolder, IsTheUsersAloneAndGoesWithTheProcess)
{
    Folder folder;
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
    Folder folder;
    const Variable path("PATH", "relative::" + folder.path.string() + ":/usr/bin:/bin");
    const std::string browser = folder.Write("firefox", noteArguments, true);
    folder.Write("opera", "not a program");
    folder.Write("broken", "#!/no/such/interpreter\n", true);
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
    Folder folder;
    const Variable path("PATH", folder.path.string() + ":/usr/bin:/bin");
    const std::string page = folder.Write("my page.htm", "<html>");
    char application[MAX_PATH];
    const std::string opener = folder.Write("xdg-open", noteArguments, true);
    folder.Write("xdg-mime", "#!/bin/sh\nexit 0\n", true);
    EXPECT_LE((INT_PTR)FindExecutableA(page.c_str(), "", application), 32);
    folder.Write("xdg-mime",
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
    line = (folder.path / "none").string() + " " + page;
    EXPECT_FALSE(CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS,
                                nullptr, nullptr, &startup, &process));
}
