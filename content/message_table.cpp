#include "content/message_table.h"

#include "platform/byte_reader.h"
#include "platform/page_text.h"

#define BLOCK_RECORD_SIZE 12
#define ENTRY_HEADER_SIZE 4
#define ENTRY_IS_UTF16 1

struct MessageTable {
    ByteReader reader; // its position is the next entry's
    UINT codePage;
    size_t left; // bytes that entries may still take: no blocks share any
};

// The text of an entry, without the zeroes behind it.
static std::string EntryText(const BYTE *bytes, size_t size, bool isUtf16, UINT codePage)
{
    const size_t unit = isUtf16 ? 2 : 1;
    size_t count = size / unit;
    while (count > 0 && bytes[(count - 1) * unit] == 0 && bytes[count * unit - 1] == 0)
        count--;
    return isUtf16 ? UnitsToUtf8(bytes, count)
                   : PageTextToUtf8(codePage, (const char *)bytes, count);
}

// Takes the entry at the position. Returns false when it is not whole or is no entry.
static bool TakeEntry(MessageTable *table, std::string *text)
{
    ByteReader *reader = &table->reader;
    const size_t length = ReadU16(reader, reader->position);
    const int flags = ReadU16(reader, reader->position + 2);
    const BYTE *entry = BytesAt(reader, reader->position, length);
    const bool isUtf16 = flags == ENTRY_IS_UTF16;
    if (entry == nullptr || length < ENTRY_HEADER_SIZE || length > table->left ||
        flags > ENTRY_IS_UTF16 || (isUtf16 && length % 2 != 0))
        return false;
    *text =
        EntryText(entry + ENTRY_HEADER_SIZE, length - ENTRY_HEADER_SIZE, isUtf16, table->codePage);
    SkipBytes(reader, length);
    table->left -= length;
    return true;
}

// Takes the messages of one block. Returns false when it is not whole.
static bool TakeBlock(MessageTable *table, size_t record, std::vector<TableText> *texts)
{
    ByteReader *reader = &table->reader;
    const int64_t low = ReadU32(reader, record);
    const int64_t high = ReadU32(reader, record + 4);
    reader->position = ReadU32(reader, record + 8);
    if (reader->failed || low > high)
        return false;
    std::string text;
    for (int64_t id = low; id <= high; id++) {
        if (!TakeEntry(table, &text))
            return false;
        texts->push_back({id, text});
    }
    return true;
}

bool ReadMessageTable(const BYTE *data, size_t size, UINT codePage, std::vector<TableText> *texts)
{
    MessageTable table = {OpenBytes(data, size), codePage, size};
    const size_t count = ReadU32(&table.reader, 0);
    bool isWhole = !table.reader.failed;
    for (size_t i = 0; i < count; i++) {
        const size_t record = 4 + i * BLOCK_RECORD_SIZE;
        table.reader.failed = false;
        if (BytesAt(&table.reader, record, BLOCK_RECORD_SIZE) == nullptr)
            return false;
        isWhole = TakeBlock(&table, record, texts) && isWhole;
    }
    return isWhole;
}
