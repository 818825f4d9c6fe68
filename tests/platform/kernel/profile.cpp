#include "platform/win32.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

static std::string Value(const std::string &file, const char *section, const char *key,
                         DWORD size = 260)
{
    const TempFolder folder;
    const std::string path = folder.Write("settings.ini", Text(file));
    char text[260];
    memset(text, '#', sizeof text);
    const DWORD length = GetPrivateProfileStringA(section, key, "none  ", text, size, path.c_str());
    EXPECT_EQ(length, strlen(text));
    EXPECT_LT(length, size);
    return text;
}

TEST(Profile, ValuesAreFoundAndTrimmed)
{
    const char file[] = "top=0\n"
                        "; a comment\r\n"
                        "[Other]\r\nPath=wrong\r\n"
                        " [ vellumax ] \r\n"
                        ";Path=comment\r\n"
                        "  PATH =  C:\\A B\\  \r\n"
                        "Path=second\r\n"
                        "Quoted=\"in quotes \"\r\nSingle=' x '\r\nOpen=\"un\r\nMixed=\"a'\r\n"
                        "Nothing=\r\nNo value\r\nComment=val ; x\r\nHash=#x\r\n"
                        "Tab=\ttab\t\r\nEquals=a=b\r\nAlone=\"\r\nNone=\"\"\r\n"
                        "[not a section\n"
                        "Inside=1\n"
                        "= no key\r\n"
                        "[Vellumax]\r\nLate=1\r\n"
                        "[c] trailing\nk=3\r[d]k=5\n[]\nk=6\nno end=7";
    struct {
        const char *key, *value, *section = "Vellumax";
    } const cases[] = {
        {"Path", "C:\\A B\\"},    {" path ", "C:\\A B\\", " VELLUMAX "},
        {"Quoted", "in quotes "}, {"Single", " x "},
        {"Open", "\"un"},         {"Mixed", "\"a'"},
        {"Nothing", ""},          {"No value", "none"},
        {"Comment", "val ; x"},   {"Hash", "#x"},
        {"Tab", "tab"},           {"Equals", "a=b"},
        {"Alone", "\""},          {"None", ""},
        {"Inside", "1"},          {"Missing", "none"},
        {"", "no key"},           {"Path", "none", "Missing"},
        {"Late", "none"}, // the first section of a name counts
        {"k", "3", "c"},          {"k", "none", "d"},
        {"top", "0", ""},
    };
    for (const auto &row : cases)
        EXPECT_EQ(Value(file, row.section, row.key), row.value) << row.section << " " << row.key;
}

TEST(Profile, WholeFilesMayBeInUtf16)
{
    std::string wide = "\xFF\xFE";
    for (char letter : std::string("[Vellumax]\r\nApplicationPath=C:\\caf\xE9\r\nk=1"))
        wide += {letter, 0};
    EXPECT_EQ(Value(wide, "vellumax", "ApplicationPath"), "C:\\caf\xE9");
    EXPECT_EQ(Value(wide, "Vellumax", "k"), "1");
    for (size_t length : {0u, 1u, 2u, 3u, 10u})
        EXPECT_EQ(Value(wide.substr(0, length), "Vellumax", "k"), "none");
    EXPECT_EQ(Value(std::string("[a]\nk=1\0\n", 9), "a", "k"), "1");
}

TEST(Profile, TextsAreCutToTheBuffer)
{
    const char file[] = "[a]\nk=12345\n";
    const TempFolder folder;
    const std::string path = folder.Write("settings.ini", Text(file));
    EXPECT_EQ(Value(file, "a", "k", 6), "12345");
    EXPECT_EQ(Value(file, "a", "k", 5), "1234");
    EXPECT_EQ(Value(file, "a", "k", 1), "");
    EXPECT_EQ(Value(file, "a", "missing", 4), "non");
    char text[4] = "abc";
    EXPECT_EQ(GetPrivateProfileStringA("a", "k", "", text, 0, path.c_str()), 0u);
    EXPECT_EQ(GetPrivateProfileStringA("a", "missing", nullptr, text, 4, path.c_str()), 0u);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(GetPrivateProfileStringA("a", "k", "dd", text, 4, "no such folder/no such.ini"), 2u);
}
