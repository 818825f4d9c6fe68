#include "platform/win32.h"

#include <gtest/gtest.h>

#include <cstring>

// Page 1252 is the one of the tests on both systems.

TEST(CodePage, EveryByteSurvivesTheWayThereAndBack)
{
    char bytes[256];
    WCHAR wide[256];
    char back[256];
    for (int i = 0; i < 256; i++)
        bytes[i] = (char)i;
    ASSERT_EQ(MultiByteToWideChar(CP_ACP, 0, bytes, 256, wide, 256), 256);
    ASSERT_EQ(WideCharToMultiByte(CP_ACP, 0, wide, 256, back, 256, nullptr, nullptr), 256);
    EXPECT_EQ(memcmp(bytes, back, 256), 0);
    struct {
        BYTE byte;
        unsigned unit;
    } const cases[] = {{0x41, 0x41}, {0x80, 0x20AC}, {0x81, 0x81}, {0x8D, 0x8D},
                       {0x9D, 0x9D}, {0x9F, 0x178},  {0xA4, 0xA4}, {0xE9, 0xE9},
                       {0xFF, 0xFF}, {0x95, 0x2022}, {0x00, 0}};
    for (const auto &expected : cases)
        EXPECT_EQ((unsigned)wide[expected.byte], expected.unit) << (int)expected.byte;
}

TEST(CodePage, UnitsThatThePageLacksBecomeQuestionMarks)
{
    // Hebrew, a surrogate pair, a lone surrogate, a private unit
    const WCHAR wide[] = {'a', 0x05D0, 'b', 0xD83D, 0xDE00, 'c', 0xDC00, 'd', 0xE000, 0};
    char text[16];
    ASSERT_EQ(WideCharToMultiByte(CP_ACP, 0, wide, -1, text, sizeof text, nullptr, nullptr), 10);
    EXPECT_STREQ(text, "a?b??c?d?");
}

TEST(CodePage, Utf8TakesEveryCharacter)
{
    // The first and the last of each length, and surrogates without their other half.
    const WCHAR wide[] = {0x7F,   0x80,   0x7FF,  0x800,  0xD7FF, 0xE000, 0xD800, 0xDC00, 0xDBFF,
                          0xDFFF, 0xDC00, 0xDFFF, 0xD800, 0xE000, 0xDBFF, 0xD7FF, 0xD83D, 0};
    const char expected[] =
        "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xF0\x90\x80\x80"
        "\xF4\x8F\xBF\xBF\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEE\x80\x80"
        "\xEF\xBF\xBD\xED\x9F\xBF\xEF\xBF\xBD";
    const int size = sizeof expected;
    char text[64];
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr), size);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, wide, -1, text, size - 1, nullptr, nullptr), 0);
    ASSERT_EQ(WideCharToMultiByte(CP_UTF8, 0, wide, -1, text, size, nullptr, nullptr), size);
    EXPECT_STREQ(text, expected);
}

TEST(CodePage, ATextIsConvertedWholeOrNotAtAll)
{
    const WCHAR wide[] = {'a', 0xE9, 0x20AC, 0, 'z'};
    const char narrow[] = "a\xE9\x80\0z";
    struct {
        int length, outSize, expected;
    } const cases[] = {
        {-1, 0, 4}, {-1, 4, 4}, {-1, 3, 0}, {2, 0, 2}, {2, 2, 2},
        {2, 1, 0},  {0, 8, 0},  {0, 0, 0},  {5, 8, 5}, // counted, a terminator is a unit like any
                                                       // other
    };
    for (const auto &row : cases) {
        char text[9];
        WCHAR units[9];
        memset(text, '#', sizeof text);
        for (WCHAR &unit : units)
            unit = '#';
        EXPECT_EQ(
            WideCharToMultiByte(CP_ACP, 0, wide, row.length, text, row.outSize, nullptr, nullptr),
            row.expected);
        EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, narrow, row.length, units, row.outSize),
                  row.expected);
        EXPECT_EQ(text[row.outSize], '#');
        EXPECT_EQ(units[row.outSize], '#');
        if (row.expected > 0 && row.outSize > 0) {
            EXPECT_EQ(memcmp(text, narrow, (size_t)row.expected), 0);
            EXPECT_EQ(memcmp(units, wide, (size_t)row.expected * sizeof(WCHAR)), 0);
        }
    }
    char text[8];
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, nullptr, 1, text, 8, nullptr, nullptr), 0);
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, wide, 1, text, -1, nullptr, nullptr), 0);
}
