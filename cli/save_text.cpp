#include "cli/save_text.h"

#include "cli/listing.h"
#include "cli/reading.h"
#include "content/string_block.h"
#include "platform/byte_reader.h"
#include "platform/page_text.h"

#include <algorithm>

std::string Utf8Texts(const BYTE *data, size_t size, const StringFormat *format, int64_t firstId,
                      bool *isWhole)
{
    std::vector<TableText> texts;
    std::string lines;
    *isWhole = ReadStringTable(data, size, format, firstId, &texts);
    for (const TableText &text : texts)
        lines += std::to_string(text.id) + ",\t" + JsonText(text.text) + "\r\n";
    return lines;
}

WriteOutcome WriteUtf8Texts(FILE *stream, const BYTE *data, size_t size, const StringFormat *format,
                            int64_t firstId)
{
    bool isWhole;
    const std::string lines = Utf8Texts(data, size, format, firstId, &isWhole);
    if (fwrite(lines.data(), 1, lines.size(), stream) != lines.size())
        return WriteShort;
    return fflush(stream) == 0 ? WriteDone : WriteShort;
}

bool LosesCharacters(const BYTE *data, size_t size)
{
    ByteReader reader = OpenBytes(data, size);
    while (!reader.failed) {
        const size_t count = TakeU16(&reader);
        const BYTE *units = BytesAt(&reader, reader.position, count * 2);
        if (units == nullptr)
            break;
        SkipBytes(&reader, count * 2);
        // As much of it as is written.
        const size_t kept = std::min<size_t>(count, STRING_TEXT_LENGTH);
        char text[STRING_TEXT_LENGTH + 1];
        UnitsToText(units, (int)kept, text);
        const std::string whole = UnitsToUtf8(units, kept);
        if (TextToUtf8(text) != whole.substr(0, whole.find('\0')))
            return true;
    }
    return false;
}

bool ComesOutEmpty(const BYTE *data, size_t size)
{
    StringBlock block = {data, (DWORD)size, 0};
    char text[STRING_TEXT_LENGTH + 1];
    return !NextString(&block, text);
}
