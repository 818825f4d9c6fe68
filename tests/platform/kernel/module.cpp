#include "platform/win32.h"

#include "program/ids.h"
#include "samples/builder/builder.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <cstring>

// The program's own resources are in the test program too.

TEST(Module, FindsTheProgramsResourcesAndNoOthers)
{
    HMODULE program = GetModuleHandleA(nullptr);
    ASSERT_NE(program, nullptr);
    HRSRC found = FindResourceA(program, MAKEINTRESOURCEA(IDB_FOLDER_CLOSED), RT_BITMAP);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(FindResourceA(nullptr, MAKEINTRESOURCEA(IDB_FOLDER_CLOSED), RT_BITMAP), found);
    HGLOBAL loaded = LoadResource(program, found);
    const BITMAPINFOHEADER *header = (const BITMAPINFOHEADER *)LockResource(loaded);
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->biSize, 40u);
    EXPECT_EQ(header->biWidth, 16);
    EXPECT_GT(SizeofResource(program, found), 40u);
    EXPECT_FALSE(FreeResource(loaded));
    EXPECT_EQ(FindResourceA(program, MAKEINTRESOURCEA(1), RT_BITMAP), nullptr);
    EXPECT_EQ(FindResourceA(program, "NOSUCH", RT_BITMAP), nullptr);
    EXPECT_EQ(FindResourceA(program, MAKEINTRESOURCEA(IDB_FOLDER_CLOSED), "NOSUCH"), nullptr);
    EXPECT_EQ(LoadResource(program, nullptr), nullptr);
    EXPECT_EQ(LockResource(nullptr), nullptr);
    EXPECT_EQ(SizeofResource(program, nullptr), 0u);
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

// Resources hold the one byte that they are described with.
static int FirstByte(HMODULE module, LPCSTR name, LPCSTR type)
{
    HRSRC found = FindResourceA(module, name, type);
    const void *bytes = LockResource(LoadResource(module, found));
    return bytes == nullptr ? -1 : *(const BYTE *)bytes;
}

TEST(Module, FileIsAModuleOfResources)
{
    const std::vector<ResourceDescription> resources = {
        {10, "MESSAGEBOX", {1}, 0x409},
        {10, 5, {2}, 0x407}, // German, English, neutral
        {10, 5, {3}, 0x409},
        {10, 5, {4}, 0},
        {10, 6, {5}, 0x407},
        {10, 6, {6}, 0x409},
        {10, 7, {7}, 0x407},
        {10, 7, {9}, 0x809},
        {"KIND", 7, {8}, 0x40C},
    };
    const TempFolder folder;
    const BuiltExecutable built =
        BuildPe({.resources = resources, .is64 = true, .imageBase = 0x140000000});
    HMODULE module = LoadLibraryA(folder.Write("module.exe", built.bytes).c_str());
    ASSERT_NE(module, nullptr);
    LPCSTR data = MAKEINTRESOURCEA(10);
    EXPECT_EQ(FirstByte(module, "MessageBox", data), 1);
    EXPECT_EQ(FirstByte(module, "Message", data), -1);
    EXPECT_EQ(FirstByte(module, MAKEINTRESOURCEA(5), data), 4);
    EXPECT_EQ(FirstByte(module, MAKEINTRESOURCEA(6), data), 6);
    EXPECT_EQ(FirstByte(module, MAKEINTRESOURCEA(7), data), 7);
    EXPECT_EQ(FirstByte(module, MAKEINTRESOURCEA(7), "kind"), 8);
    EXPECT_EQ(FirstByte(module, MAKEINTRESOURCEA(8), data), -1);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_FALSE(FreeLibrary(module));
    EXPECT_FALSE(FreeLibrary(nullptr));
    EXPECT_EQ(FirstByte(module, "MessageBox", data), -1);
}

TEST(Module, OtherFilesAreRefused)
{
    const TempFolder folder;
    const ExecutableDescription description = {.resources = {{10, 5, {1}}}};
    const auto [whole, header] = std::pair(BuildPe(description).bytes, BuildPe(description).header);
    Bytes noMagic = whole;
    noMagic[header + 24] = 0;
    for (const Bytes &bytes :
         {Bytes{}, Text("MZ"), BuildNe(description).bytes,
          Bytes(whole.begin(), whole.begin() + (ptrdiff_t)header + 30), noMagic})
        EXPECT_EQ(LoadLibraryA(folder.Write("module.exe", bytes).c_str()), nullptr);
    for (LPCSTR path : {"no such folder/no such file.exe", "", (LPCSTR) nullptr})
        EXPECT_EQ(LoadLibraryA(path), nullptr);
}
