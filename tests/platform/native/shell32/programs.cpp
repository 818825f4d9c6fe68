#include "platform/win32.h"

#include "tests/support/temp_folder.h"
#include "tests/support/variable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

// Writes a file that may be run.
static std::string WriteProgram(const TempFolder &folder, const std::string &name,
                                const std::string &text)
{
    for (const int number : {SIGHUP, SIGINT, SIGQUIT})
        signal(number, SIG_DFL); // a run in the background ignores them
    const std::string path = folder.Write(name, Text(text));
    chmod(path.c_str(), 0755);
    return path;
}

// What a program wrote to a file, once it is there.
static std::string WaitForText(const std::filesystem::path &file)
{
    for (int i = 0; i < 500; i++) {
        const Bytes text = ReadFile(file);
        if (!text.empty())
            return std::string(text.begin(), text.end());
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return "";
}

// Notes how many arguments it got, how many kinds of signals were held back, and the first
// argument, in one step.
static const char *const noteArguments = "#!/bin/sh\n"
                                         "odd=$(grep -c '^Sig[BI].*[1-9a-f]' /proc/self/status)\n"
                                         "printf '%s:%s:%s' $# $odd \"$1\" >\"$0.part\"\n"
                                         "mv \"$0.part\" \"$0.seen\"\n";

TEST(Programs, AreStartedByNameWithOneArgument)
{
    const TempFolder folder;
    const Variable path("PATH", "relative::" + folder.Path("a b") + ":/usr/bin:/bin");
    const std::string browser = WriteProgram(folder, "a b/firefox", noteArguments);
    folder.Write("a b/opera", Text("not a program"));
    WriteProgram(folder, "a b/broken", "#!/no/such/interpreter\n");
    const char *address = "file:///a%20b#QUILM";
    for (const char *missing :
         {"opera.exe", "c:\\Program Files\\Opera\\opera.exe", "iexplore.exe", "broken", "", ".exe"})
        EXPECT_LE((INT_PTR)ShellExecuteA(nullptr, "open", missing, address, nullptr, 3), 32)
            << missing;
    signal(SIGXFSZ, SIG_IGN);
    rlimit files;
    getrlimit(RLIMIT_NOFILE, &files);
    for (const rlim_t most : {rlim_t{0}, files.rlim_cur}) { // with none, nothing tells how it went
        const rlimit limit = {most, files.rlim_max};
        setrlimit(RLIMIT_NOFILE, &limit);
        EXPECT_EQ((INT_PTR)ShellExecuteA(nullptr, "open", "firefox.exe", address, nullptr, 3),
                  most == 0 ? 5 : 33);
    }
    EXPECT_EQ(WaitForText(browser + ".seen"), "1:0:" + std::string(address));
}

TEST(Programs, TheDesktopsApplicationTakesThePageAsItIs)
{
    const TempFolder folder;
    const Variable path("PATH", folder.Path("a b") + ":/usr/bin:/bin");
    const std::string page = folder.Write("my page.htm", Text("<html>"));
    char application[MAX_PATH];
    const int free = dup(0);
    close(free);
    const std::string opener = WriteProgram(folder, "a b/xdg-open", noteArguments);
    for (const char *unknowing : {"#!/bin/sh\nexit 0\n", "#!/bin/sh\necho b.desktop\nexit 1\n",
                                  "#!/no/such/interpreter\n"}) {
        WriteProgram(folder, "a b/xdg-mime", unknowing);
        EXPECT_LE((INT_PTR)FindExecutableA(page.c_str(), "", application), 32);
    }
    WriteProgram(folder, "a b/xdg-mime",
                 "#!/bin/sh\n[ \"$*\" = 'query default text/html' ] && echo b.desktop\n");
    EXPECT_LE((INT_PTR)FindExecutableA((page + "x").c_str(), "", application), 32);
    EXPECT_STREQ(application, "");
    ASSERT_GT((INT_PTR)FindExecutableA(page.c_str(), "", application), 32);
    std::string line = std::string(application) + " " + page;
    STARTUPINFOA startup = {};
    PROCESS_INFORMATION process;
    std::string missing = "no such program " + page;
    EXPECT_FALSE(CreateProcessA(nullptr, missing.data(), nullptr, nullptr, TRUE,
                                NORMAL_PRIORITY_CLASS, nullptr, nullptr, &startup, &process));
    ASSERT_TRUE(CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS,
                               nullptr, nullptr, &startup, &process));
    CloseHandle(process.hProcess);
    EXPECT_EQ(WaitForText(opener + ".seen"), "1:0:" + page);
    const int still = dup(0); // none was left open
    EXPECT_EQ(still, free);
    close(still);
}
