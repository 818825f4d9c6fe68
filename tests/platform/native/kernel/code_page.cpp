#include "platform/native/kernel/code_page.h"

#include <gtest/gtest.h>

#include <memory>

TEST(AnsiPage, FollowsTheLanguageOfTheLocale)
{
    const std::pair<const char *, unsigned> cases[] = {
        {"", 1252},           {"C", 1252},           {"POSIX", 1252},        {"en_US.UTF-8", 1252},
        {"de_DE@euro", 1252}, {"pl_PL.UTF-8", 1250}, {"ru_RU.KOI8-R", 1251}, {"ru", 1251},
        {"el_GR", 1253},      {"tr_TR.UTF-8", 1254}, {"he_IL", 1255},        {"ar_EG.UTF-8", 1256},
        {"lt_LT", 1257},      {"vi_VN", 1258},       {"th_TH.TIS-620", 874}, {"ja_JP.UTF-8", 1252},
        {"sr_RS", 1251},      {"sr_RS@latin", 1250}, {"rus_RU", 1252},       {"uz_UZ", 1254},
        {"az", 1254},         {"az@cyrillic", 1251}, {"uz@cyrillic", 1251},  {"de@cyrillic", 1252},
    };
    for (const auto &[locale, page] : cases)
        EXPECT_EQ(CodePageOfLocale(locale), page) << locale;
}

TEST(AnsiPage, TablesAreThoseOfWindows)
{
    struct {
        unsigned page;
        BYTE byte;
        unsigned unit;
    } const cases[] = {
        {1250, 0x9C, 0x015B}, {1250, 0x81, 0x81},   {1251, 0xC0, 0x0410}, {1253, 0xE1, 0x03B1},
        {1253, 0xD2, 0xF8FA}, {1254, 0xDD, 0x0130}, {1255, 0xCA, 0x05BA}, {1255, 0xE0, 0x05D0},
        {1255, 0xC8, 0x05B8}, {1256, 0xC7, 0x0627}, {1257, 0xE0, 0x0105}, {1258, 0xD5, 0x01A0},
        {1258, 0xCC, 0x0300}, {874, 0xA1, 0x0E01},  {874, 0xFF, 0xF8C8},
    };
    const auto page = std::make_unique<CodePage>();
    for (const auto &row : cases) {
        ASSERT_TRUE(FillCodePage(row.page, page.get()));
        EXPECT_EQ(page->units[row.byte], row.unit) << row.page << " " << (int)row.byte;
        EXPECT_EQ(page->bytes[row.unit], row.byte) << row.page << " " << (int)row.byte;
    }
    EXPECT_FALSE(FillCodePage(9999, page.get()));
}
