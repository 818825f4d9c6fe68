#include "platform/win32.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

TEST(Programs, ThatAreNotThereAreNotStarted)
{
    for (LPCSTR name : {"no such program.exe", "no such folder/no such program.exe", ""}) {
        EXPECT_LE((INT_PTR)ShellExecuteA(nullptr, "open", name, "x", nullptr, SW_SHOWMAXIMIZED), 32)
            << name;
        STARTUPINFOA startup = {};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process;
        memset(&process, 0x55, sizeof process);
        const PROCESS_INFORMATION before = process;
        std::string line = std::string(name) + " x";
        EXPECT_FALSE(CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE,
                                    NORMAL_PRIORITY_CLASS, nullptr, nullptr, &startup, &process))
            << name;
        EXPECT_EQ(memcmp(&process, &before, sizeof process), 0);
    }
}

TEST(Programs, OpenOnlyWhatIsThereAndOfAKnownKind)
{
    char folder[MAX_PATH];
    GetTempPathA(sizeof folder, folder);
    const std::string file = std::string(folder) + "page.nosuchkind";
    fclose(fopen(file.c_str(), "wb"));
    const std::string missing = std::string(folder) + "missing.htm";
    for (const std::string &name : {file, missing}) {
        char path[MAX_PATH] = "before";
        EXPECT_LE((INT_PTR)FindExecutableA(name.c_str(), "", path), 32) << name;
        EXPECT_STREQ(path, "");
    }
    remove(file.c_str());
}
