#include "content/string_table.h"

#include "platform/byte_reader.h"
#include "platform/page_text.h"

int64_t FirstStringId(DWORD block)
{
    return ((int64_t)block - 1) * STRING_BLOCK_SLOTS;
}

// Takes the next string. Empty, and the reader has failed, when it is not whole.
static std::string TakeString(ByteReader *reader, const StringFormat *format)
{
    size_t count = 0;
    if (format->isNe) {
        const BYTE *counted = BytesAt(reader, reader->position, 1);
        count = counted != nullptr ? *counted : 0;
        SkipBytes(reader, 1);
    } else {
        count = TakeU16(reader);
    }
    const size_t size = format->isNe ? count : count * 2;
    const BYTE *bytes = BytesAt(reader, reader->position, size);
    SkipBytes(reader, size);
    if (bytes == nullptr || count == 0)
        return "";
    return format->isNe ? PageTextToUtf8(format->codePage, (const char *)bytes, count)
                        : UnitsToUtf8(bytes, count);
}

bool ReadStringTable(const BYTE *data, size_t size, const StringFormat *format, int64_t firstId,
                     std::vector<TableText> *texts)
{
    ByteReader reader = OpenBytes(data, size);
    for (int slot = 0; slot < STRING_BLOCK_SLOTS && !reader.failed; slot++) {
        const std::string text = TakeString(&reader, format);
        if (!text.empty())
            texts->push_back({firstId + slot, text});
    }
    return !reader.failed;
}
