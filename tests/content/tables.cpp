#include "content/message_table.h"
#include "samples/builder/bytes.h"
#include "samples/builder/texts.h"

#include <gtest/gtest.h>

using Lines = std::vector<std::string>;

static Lines Told(const std::vector<TableText> &texts)
{
    Lines lines;
    for (const TableText &text : texts)
        lines.push_back(std::to_string(text.id) + " " + text.text);
    return lines;
}

// What is cut off is not there, so that a sanitizer sees a read past it.
static Bytes CutAt(const Bytes &bytes, size_t size)
{
    return Bytes(bytes.begin(), bytes.begin() + (ptrdiff_t)size);
}

TEST(StringTables, AreReadSlotBySlot)
{
    const Bytes wide = MakeStringBlock({u"", u"one", {}, u"\u4E00\xD83D\xDE00", u"\xD800x"});
    const Bytes narrow = MakeNeStringBlock({"", "\xCF\xF0", "two"});
    const Lines all = {"1 one", "3 \xE4\xB8\x80\xF0\x9F\x98\x80", "4 \xEF\xBF\xBDx"};
    const struct {
        const char *what;
        Bytes block;
        StringFormat format;
        DWORD number;
        Lines texts;
        int isWhole;
    } cases[] = {
        {"whole", wide, {0, 0}, 1, all, 1},
        {"of a high number", CutAt(wide, 10), {0, 0}, 0x7FFFFFFF, {"34359738337 one"}, 0},
        {"of number 0", CutAt(wide, 10), {0, 0}, 0, {"-15 one"}, 0},
        {"cut in a text", CutAt(wide, 15), {0, 0}, 1, {"1 one"}, 0},
        {"cut in a count", CutAt(wide, wide.size() - 1), {0, 0}, 1, all, 0},
        {"none", {}, {0, 0}, 1, {}, 0},
        {"16-bit", narrow, {1, 1251}, 2, {"17 \xD0\x9F\xD1\x80", "18 two"}, 1},
        {"16-bit, cut", CutAt(narrow, 6), {1, 1252}, 2, {"17 \xC3\x8F\xC3\xB0"}, 0},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.what);
        std::vector<TableText> texts;
        EXPECT_EQ(ReadStringTable(row.block.data(), row.block.size(), &row.format,
                                  FirstStringId(row.number), &texts),
                  row.isWhole);
        EXPECT_EQ(Told(texts), row.texts);
    }
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

TEST(MessageTables, GiveWhatLiesInThem)
{
    const std::string five = "5 \xE4\xB8\x80\r", six = "6 \xD0\x9F!",
                      last = "4294967295 \xEF\xBF\xBDz";
    const struct {
        const char *what;
        size_t offset; // of a number of 32 bits that is overwritten
        uint32_t value;
        size_t size;
        Lines texts;
        int isWhole;
    } cases[] = {
        {"whole", 0, 2, 56, {five, six, last}, 1},
        {"no blocks", 0, 0, 56, {}, 1},
        {"a huge count of blocks", 0, 0xFFFFFFFF, 28, {}, 0},
        {"a huge range", 8, 0xFFFFFFFF, 56, {five, six, "7 \xEF\xBF\xBDz", last}, 0},
        {"a range that ends before it begins", 8, 4, 56, {last}, 0},
        {"entries that blocks share", 24, 28, 56, {five, six, "4294967295 \xE4\xB8\x80\r"}, 1},
        {"entries outside", 12, 0xFFFFFFF0, 56, {last}, 0},
        {"an entry without a header", 40, 3, 56, {five, last}, 0},
        {"an odd length of UTF-16", 28, 0x1000B, 56, {last}, 0},
        {"an unknown kind", 40, 0x20008, 56, {five, last}, 0},
        {"an entry that runs past", 48, 0x1000A, 56, {five, six}, 0},
        {"cut in the blocks", 0, 2, 27, {}, 0},
        {"cut in the count", 0, 2, 3, {}, 0},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.what);
        Bytes table = MessageTable();
        PutU32(table, row.offset, row.value);
        const Bytes cut = CutAt(table, row.size);
        std::vector<TableText> texts;
        EXPECT_EQ(ReadMessageTable(cut.data(), cut.size(), 1251, &texts), row.isWhole);
        EXPECT_EQ(Told(texts), row.texts);
    }
    // However often blocks name the same entries, no more is read than the table is long.
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
