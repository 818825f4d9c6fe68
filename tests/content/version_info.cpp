#include "content/version_info.h"
#include "samples/builder/texts.h"

#include <gtest/gtest.h>

#include <algorithm>

using Lines = std::vector<std::string>;

static Lines Told(const VersionInfo &info)
{
    Lines lines;
    const VersionNumbers &numbers = info.numbers;
    if (info.hasNumbers)
        lines.push_back(std::to_string(numbers.file[0]) + "." + std::to_string(numbers.file[3]) +
                        " " + std::to_string(numbers.product[1]) + " os " +
                        std::to_string(numbers.os) + " type " + std::to_string(numbers.type));
    for (const VersionTable &table : info.tables) {
        lines.push_back(table.key + " " + std::to_string(table.language) + " " +
                        std::to_string(table.codePage));
        for (const VersionText &text : table.texts)
            lines.push_back(text.name + "=" + text.text);
    }
    for (const VersionTranslation &translation : info.translations)
        lines.push_back(std::to_string(translation.language) + " " +
                        std::to_string(translation.codePage));
    return lines;
}

// Where the block with this key begins in a record, whose header is so long.
static size_t BlockOf(const Bytes &record, std::string_view key, bool isWide)
{
    Bytes text;
    AddEndedText(text, key, isWide);
    const auto found = std::search(record.begin(), record.end(), text.begin(), text.end());
    return (size_t)(found - record.begin()) - (isWide ? 6 : 4);
}

// Version 0x10000 is 1.0; the record's own words are told.
TEST(VersionData, AreReadAsFarAsTheyLieInTheirBlocks)
{
    const std::string wideNumbers = "1.0 0 os 262148 type 2", numbers = "1.0 0 os 1 type 2";
    const std::string description = "FileDescription=A \xC3\xA9", original = "OriginalFilename=a.b";
    const Lines whole = {wideNumbers, "040904b0 1033 1200", description, "FileVersion=1.0",
                         original,    "1033 1200"};
    const struct {
        const char *what;
        bool isWide;
        UINT codePage;
        const char *key; // of the block that is changed
        size_t offset;   // in it: 0 its length, 2 its value's
        unsigned value;  // of 16 bits that are written there
        Lines texts;
    } cases[] = {
        {"whole", true, 0, "VS_VERSION_INFO", 2, 52, whole},
        {"16-bit, in the page of its table",
         false,
         0,
         "VS_VERSION_INFO",
         2,
         52,
         {numbers, "040904e4 1033 1252", description, "FileVersion=1.0", original, "1033 1252"}},
        {"16-bit, in another page",
         false,
         1251,
         "VS_VERSION_INFO",
         2,
         52,
         {numbers, "040904e4 1033 1252", "FileDescription=A \xD0\xB9", "FileVersion=1.0", original,
          "1033 1252"}},
        {"no such key", true, 0, "VS_VERSION_INFO", 6, 'X', {}},
        {"no numbers", true, 0, "VS_VERSION_INFO", 40, 0, Lines(whole.begin() + 1, whole.end())},
        {"longer than the data", true, 0, "VS_VERSION_INFO", 0, 0xFFFF, whole},
        {"no longer than its header", true, 0, "VS_VERSION_INFO", 0, 6, {}},
        {"a table whose key is none",
         true,
         0,
         "040904b0",
         6,
         'x',
         {wideNumbers, "x40904b0 0 0", description, "FileVersion=1.0", original, "1033 1200"}},
        {"a text whose value is told too long", true, 0, "FileVersion", 2, 0xFFFF, whole},
        {"a text that runs past its table",
         true,
         0,
         "FileVersion",
         0,
         0xFFFF,
         {wideNumbers, "040904b0 1033 1200", description, "FileVersion=1.0", "1033 1200"}},
        {"a text without a length",
         true,
         0,
         "FileVersion",
         0,
         0,
         {wideNumbers, "040904b0 1033 1200", description, "1033 1200"}},
        {"translations that are told too long", true, 0, "Translation", 2, 0xFFFF, whole},
        {"a translation that is cut", true, 0, "Translation", 2, 3,
         Lines(whole.begin(), whole.end() - 1)},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.what);
        Bytes record = MakeVersion("a.b", "A \xE9", row.isWide);
        PutU16(record, BlockOf(record, row.key, row.isWide) + row.offset, row.value);
        VersionInfo info;
        EXPECT_EQ(ReadVersionInfo(record.data(), record.size(), row.codePage, &info),
                  !row.texts.empty());
        EXPECT_EQ(Told(info), row.texts);
    }
}

// What is cut off is not there, so that a sanitizer sees a read past it.
TEST(VersionData, ThatAreCutAnywhereGiveABeginningOfThemselves)
{
    for (const bool isWide : {true, false}) {
        const Bytes record = MakeVersion("a.b", "A", isWide);
        size_t before = 0;
        for (size_t size = 0; size <= record.size(); size++) {
            const Bytes cut(record.begin(), record.begin() + (ptrdiff_t)size);
            VersionInfo info;
            ReadVersionInfo(cut.data(), cut.size(), 0, &info);
            const size_t told = Told(info).size();
            EXPECT_LE(before, told) << size;
            before = told;
        }
        EXPECT_EQ(before, 6u);
    }
}
