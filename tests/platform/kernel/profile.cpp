#include "platform/win32.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

// A settings file with the given text, for one test.
struct SettingsFile {
    TempFolder folder;
    std::string path;

    explicit SettingsFile(const std::string &text) : path(folder.Write("settings.ini", Text(text)))
    {
    }
};

static std::string Value(const SettingsFile &file, const char *section, const char *key,
                         DWORD size = 260)
{
    char text[260];
    memset(text, '#', sizeof text);
    const DWORD length =
        GetPrivateProfileStringA(section, key, "none  ", text, size, file.path.c_str());
    EXPECT_EQ(length, strlen(text));
    EXPECT_LT(length, size);
    return text;
}

TEST(Profile, ValuesAreFoundAndTrimmed)
{
    const SettingsFile file("top=0\n"
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
                            "[Vellumax]\r\nLate=1\r\n"
                            "[c] trailing\nk=3\r[d]k=5\n[]\nk=6\nno end=7");
    struct {
        const char *section, *key, *value;
    } const cases[] = {
        {"Vellumax", "Path", "C:\\A B\\"},
        {" VELLUMAX ", " path ", "C:\\A B\\"},
        {"Vellumax", "Quoted", "in quotes "},
        {"Vellumax", "Single", " x "},
        {"Vellumax", "Open", "\"un"},
        {"Vellumax", "Mixed", "\"a'"},
        {"Vellumax", "Nothing", ""},
        {"Vellumax", "No value", "none"},
        {"Vellumax", "Comment", "val ; x"},
        {"Vellumax", "Hash", "#x"},
        {"Vellumax", "Tab", "tab"},
        {"Vellumax", "Equals", "a=b"},
        {"Vellumax", "Alone", "\""},
        {"Vellumax", "None", ""},
        {"Vellumax", "Inside", "1"},
        {"Vellumax", "Late", "none"}, // the first section of a name counts
        {"Vellumax", "Missing", "none"},
        {"Missing", "Path", "none"},
        {"c", "k", "3"},
        {"d", "k", "none"},
        {"", "top", "0"},
    };
    for (const auto &row : cases)
        EXPECT_EQ(Value(file, row.section, row.key), row.value) << row.section << " " << row.key;
}

TEST(Profile, WholeFilesMayBeInUtf16)
{
    std::string wide = "\xFF\xFE";
    for (char letter : std::string("[Vellumax]\r\nApplicationPath=C:\\caf\xE9\r\nk=1"))
        wide += {letter, 0};
    {
        const SettingsFile file(wide);
        EXPECT_EQ(Value(file, "vellumax", "ApplicationPath"), "C:\\caf\xE9");
        EXPECT_EQ(Value(file, "Vellumax", "k"), "1");
    }
    for (size_t length : {0u, 1u, 2u, 3u, 10u})
        EXPECT_EQ(Value(SettingsFile(wide.substr(0, length)), "Vellumax", "k"), "none");
    EXPECT_EQ(Value(SettingsFile(std::string("[a]\nk=1\0\n", 9)), "a", "k"), "1");
}

TEST(Profile, TextsAreCutToTheBuffer)
{
    const SettingsFile file("[a]\nk=12345\n");
    EXPECT_EQ(Value(file, "a", "k", 6), "12345");
    EXPECT_EQ(Value(file, "a", "k", 5), "1234");
    EXPECT_EQ(Value(file, "a", "k", 1), "");
    EXPECT_EQ(Value(file, "a", "missing", 4), "non");
    char text[4] = "abc";
    EXPECT_EQ(GetPrivateProfileStringA("a", "k", "", text, 0, file.path.c_str()), 0u);
    EXPECT_EQ(GetPrivateProfileStringA("a", "missing", nullptr, text, 4, file.path.c_str()), 0u);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(GetPrivateProfileStringA("a", "k", "dd", text, 4, "no such folder/no such.ini"), 2u);
}
