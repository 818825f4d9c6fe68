// What every cut and every wild byte of strings, messages and version data comes to. What is cut
// off is not there, so that a sanitizer sees a read past it.
#include "content/message_table.h"
#include "content/version_info.h"
#include "samples/builder/texts.h"
#include "tests/support/damage.h"
#include "tests/support/transcript.h"

#include <gtest/gtest.h>

typedef std::vector<std::string> Lines;

static std::string Plain(const std::string &text)
{
    std::string plain;
    for (const char letter : text)
        plain +=
            (unsigned char)letter < ' ' ? "\\" + std::to_string(letter) : std::string(1, letter);
    return plain;
}

static std::string Told(bool isWhole, const std::vector<TableText> &texts)
{
    std::string told = isWhole ? "whole" : "damaged";
    for (const TableText &text : texts)
        told += "; " + std::to_string(text.id) + " " + Plain(text.text);
    return told;
}

static std::string StringsOf(const Bytes &block, const StringFormat &format)
{
    std::vector<TableText> texts;
    const bool isWhole =
        ReadStringTable(block.data(), block.size(), &format, FirstStringId(0), &texts);
    return Told(isWhole, texts);
}

static std::string MessagesOf(const Bytes &table)
{
    std::vector<TableText> texts;
    const bool isWhole = ReadMessageTable(table.data(), table.size(), 1251, &texts);
    return Told(isWhole, texts);
}

static std::string VersionOf(const Bytes &record, UINT codePage)
{
    VersionInfo info;
    std::string told = ReadVersionInfo(record.data(), record.size(), codePage, &info) ? "" : "none";
    const VersionNumbers &numbers = info.numbers;
    for (const DWORD number :
         {(DWORD)info.hasNumbers, (DWORD)numbers.file[0], (DWORD)numbers.file[3],
          (DWORD)numbers.product[1], numbers.flags, numbers.os, numbers.type, numbers.subtype})
        told += " " + std::to_string(number);
    for (const VersionTable &table : info.tables) {
        told += "; " + Plain(table.key) + " " + std::to_string(table.isKnown) + " " +
                std::to_string(table.language) + " " + std::to_string(table.codePage);
        for (const VersionText &text : table.texts)
            told += ", " + Plain(text.name) + "=" + Plain(text.text);
    }
    for (const VersionTranslation &translation : info.translations)
        told += "; " + std::to_string(translation.language) + " " +
                std::to_string(translation.codePage);
    return told;
}

// Two blocks: messages 5 (UTF-16) and 6 (code page), and the highest one.
static Bytes MessageTable()
{
    Bytes table;
    for (const uint32_t number : {2u, 5u, 6u, 28u, 0xFFFFFFFFu, 0xFFFFFFFFu, 48u})
        AddU32(table, number);
    for (const unsigned number : {12u, 1u, 0x4E00u, 13u, 0u, 0u}) // at 28
        AddU16(table, number);
    for (const unsigned number : {8u, 0u}) // at 40
        AddU16(table, number);
    AddText(table, std::string_view("\xCF!\0\0", 4));
    for (const unsigned number : {8u, 1u, 0xDC00u, 'z' + 0u}) // at 48
        AddU16(table, number);
    return table;
}

TEST(DamagedTables, ComeToWhatTheirTextTells)
{
    Bytes bare = MakeVersion("a.b", "c", true);
    PutU32(bare, 40, 0); // numbers without their mark are none
    const struct {
        const char *what;
        Bytes bytes;
        std::function<std::string(const Bytes &)> outcomeOf;
    } cases[] = {
        {"Strings.", MakeStringBlock({u"", u"one", {}, u"\u4E00\xD83D\xDE00", u"\xD800x"}),
         [](const Bytes &bytes) {
             return StringsOf(bytes, {false, 0});
         }},
        {"16-bit strings.", MakeNeStringBlock({"", "\xCF\xF0", "two"}),
         [](const Bytes &bytes) {
             return StringsOf(bytes, {true, 1251});
         }},
        {"Messages.", MessageTable(), MessagesOf},
        {"Version data.", MakeVersion("a.b", "A \xE9", true),
         [](const Bytes &bytes) { return VersionOf(bytes, 0); }},
        {"Version data without numbers.", bare,
         [](const Bytes &bytes) { return VersionOf(bytes, 0); }},
        {"16-bit version data.", MakeVersion("a.b", "A \xE9", false),
         [](const Bytes &bytes) { return VersionOf(bytes, 0); }},
    };
    Lines told;
    for (const auto &row : cases) {
        told.push_back(row.what);
        const Lines lines = TellDamaged(row.bytes, row.bytes.size(), row.outcomeOf);
        told.insert(told.end(), lines.begin(), lines.end());
    }
    told.push_back("In another page: " + VersionOf(MakeVersion("a.b", "A \xE9", false), 1251));
    ExpectTold(told, CONTENT_FOLDER "/damaged_tables.txt", TOLD_FOLDER "/damaged_tables.told.txt");
}

// However often blocks name the same entries, no more is read than the table is long.
TEST(DamagedTables, ThatShareMessagesAreBounded)
{
    Bytes shared;
    AddU32(shared, 1000);
    for (int i = 0; i < 1000; i++)
        for (const uint32_t number : {0u, 99u, 12004u})
            AddU32(shared, number);
    for (int i = 0; i < 100; i++)
        AddU32(shared, 4);
    std::vector<TableText> texts;
    EXPECT_EQ(ReadMessageTable(shared.data(), shared.size(), 0, &texts), 0);
    EXPECT_EQ(texts.size(), shared.size() / 4);
}
