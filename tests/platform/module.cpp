#include "platform/win32.h"

#include "resources/ids.h"

#include <gtest/gtest.h>

#include <cstring>

// The program's own resources are in the test program too.

TEST(Module, ProgramResourcesAreFoundByNumber)
{
    HMODULE program = GetModuleHandleA(nullptr);
    ASSERT_NE(program, nullptr);
    HRSRC found = FindResourceA(program, MAKEINTRESOURCEA(IDB_FOLDER_CLOSED), RT_BITMAP);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(FindResourceA(nullptr, "#6030", "#2"), found);
    EXPECT_EQ(FindResourceA(program, MAKEINTRESOURCEA(IDB_FOLDER_CLOSED), RT_BITMAP), found);
    HGLOBAL loaded = LoadResource(program, found);
    const BITMAPINFOHEADER *header = (const BITMAPINFOHEADER *)LockResource(loaded);
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->biSize, 40u);
    EXPECT_EQ(header->biWidth, 16);
    EXPECT_GT(SizeofResource(program, found), 40u);
    EXPECT_FALSE(FreeResource(loaded));
}

TEST(Module, WhatIsNotThereIsNotFound)
{
    HMODULE program = GetModuleHandleA(nullptr);
    EXPECT_EQ(FindResourceA(program, MAKEINTRESOURCEA(1), RT_BITMAP), nullptr);
    EXPECT_EQ(FindResourceA(program, "NOSUCH", RT_BITMAP), nullptr);
    EXPECT_EQ(FindResourceA(program, MAKEINTRESOURCEA(IDB_FOLDER_CLOSED), "NOSUCH"), nullptr);
    EXPECT_EQ(LoadResource(program, nullptr), nullptr);
    EXPECT_EQ(LockResource(nullptr), nullptr);
    EXPECT_EQ(SizeofResource(program, nullptr), 0u);
    EXPECT_EQ(LoadLibraryA("no such folder/no such file.exe"), nullptr);
}

TEST(Module, TextsAreCutToTheBuffer)
{
    HMODULE program = GetModuleHandleA(nullptr);
    const char *whole = "There has been an error creating this file.";
    struct {
        int size;
        size_t length;
    } const cases[] = {{260, 43}, {44, 43}, {43, 42}, {6, 5}, {1, 0}};
    for (const auto &row : cases) {
        char text[300];
        memset(text, '#', sizeof text);
        EXPECT_EQ(LoadStringA(program, IDS_CREATE_ERROR, text, row.size), (int)row.length);
        EXPECT_EQ(std::string(text), std::string(whole, row.length));
        EXPECT_EQ(text[row.length + 1], '#');
    }
    char text[8] = "before";
    EXPECT_EQ(LoadStringA(program, 1, text, sizeof text), 0); // no such block
    EXPECT_EQ(LoadStringA(program, 111 + 16, text, sizeof text), 0);
}
