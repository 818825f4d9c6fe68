#include "platform/byte_reader.h"

ByteReader OpenBytes(const void *data, size_t total)
{
    return {static_cast<const uint8_t *>(data), total, 0, false};
}

const uint8_t *BytesAt(ByteReader *reader, size_t offset, size_t size)
{
    if (reader->failed)
        return nullptr;
    if (size > reader->total || offset > reader->total - size) {
        reader->failed = true;
        return nullptr;
    }
    return reader->data + offset;
}

uint16_t ReadU16(ByteReader *reader, size_t offset)
{
    const uint8_t *bytes = BytesAt(reader, offset, 2);
    return bytes ? static_cast<uint16_t>(bytes[0] | bytes[1] << 8) : uint16_t{0};
}

uint32_t ReadU32(ByteReader *reader, size_t offset)
{
    const uint8_t *bytes = BytesAt(reader, offset, 4);
    if (!bytes)
        return 0;
    return uint32_t{bytes[0]} | uint32_t{bytes[1]} << 8 | uint32_t{bytes[2]} << 16 |
           uint32_t{bytes[3]} << 24;
}

uint16_t TakeU16(ByteReader *reader)
{
    const uint16_t value = ReadU16(reader, reader->position);
    SkipBytes(reader, sizeof value);
    return value;
}

uint32_t TakeU32(ByteReader *reader)
{
    const uint32_t value = ReadU32(reader, reader->position);
    SkipBytes(reader, sizeof value);
    return value;
}

void SkipBytes(ByteReader *reader, size_t size)
{
    if (BytesAt(reader, reader->position, size))
        reader->position += size;
}

static uint8_t FoldLetter(uint8_t letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<uint8_t>(letter + 'a' - 'A') : letter;
}

bool EqualLetters(const void *bytes, const char *text, size_t length)
{
    const uint8_t *letters = static_cast<const uint8_t *>(bytes);
    for (size_t i = 0; i < length; ++i)
        if (FoldLetter(letters[i]) != FoldLetter(static_cast<uint8_t>(text[i])))
            return false;
    return true;
}
