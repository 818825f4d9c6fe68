#include "platform/win32.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

TEST(Folders, TextsThatDoNotFitTellTheirSize)
{
    for (DWORD(WINAPI * ask)(DWORD, LPSTR) : {&GetCurrentDirectoryA, &GetTempPathA}) {
        char path[1000];
        const DWORD length = ask(sizeof path, path);
        ASSERT_GT(length, 0u);
        EXPECT_EQ(length, strlen(path));
        EXPECT_NE(GetFileAttributesA(path), INVALID_FILE_ATTRIBUTES);
        char exact[1000];
        EXPECT_EQ(ask(length + 1, exact), length);
        EXPECT_STREQ(exact, path);
        EXPECT_EQ(ask(length, exact), length + 1);
        EXPECT_EQ(ask(2, exact), length + 1);
    }
}

TEST(Folders, ProgramKnowsItsPath)
{
    char path[1000];
    const DWORD length = GetModuleFileNameA(GetModuleHandleA(nullptr), path, sizeof path);
    ASSERT_EQ(length, strlen(path));
    EXPECT_NE(std::string(path).find("core_tests"), std::string::npos);
    EXPECT_NE(GetFileAttributesA(path), INVALID_FILE_ATTRIBUTES);
    char cut[1000];
    EXPECT_EQ(GetModuleFileNameA(nullptr, cut, length), length);
    EXPECT_EQ(std::string(cut, length - 1), std::string(path, length - 1));
    EXPECT_EQ(GetModuleFileNameA(nullptr, cut, 0), 0u);
    EXPECT_EQ(GetModuleFileNameA((HMODULE)(uintptr_t)0x76543000, cut, sizeof cut), 0u);
    EXPECT_EQ(GetFileAttributesA("no such file"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetFileAttributesA(""), INVALID_FILE_ATTRIBUTES);
}

TEST(TemporaryNames, AreFormedFromPrefixAndNumber)
{
    char folder[MAX_PATH];
    char path[MAX_PATH];
    const DWORD length = GetTempPathA(sizeof folder, folder);
    struct {
        const char *prefix;
        UINT unique;
        const char *name;
    } const cases[] = {
        {"VLXP", 0x9876, "VLX9876.tmp"}, {"", 0x10, "10.tmp"}, {"A", 0x12345, "A2345.tmp"}};
    for (const auto &row : cases) {
        EXPECT_EQ(GetTempFileNameA(folder, row.prefix, row.unique, path), row.unique & 0xFFFF);
        EXPECT_STREQ(path + length, row.name);
        EXPECT_EQ(strncmp(path, folder, length), 0);
        EXPECT_EQ(GetFileAttributesA(path), INVALID_FILE_ATTRIBUTES); // none is made
    }
    folder[length - 1] = 0; // with no separator at its end
    char other[MAX_PATH];
    EXPECT_EQ(GetTempFileNameA(folder, "A", 0x2345, other), 0x2345u);
    EXPECT_STREQ(other, path);
    EXPECT_EQ(GetTempFileNameA("no such folder", "A", 1, path), 0u);
}
