#include "content/byte_reader.h"

#include <algorithm>
#include <cstring>

ByteReader OpenBytes(const void *data, size_t total)
{
    return {(const BYTE *)data, total, 0, 0};
}

const BYTE *BytesAt(ByteReader *reader, size_t offset, size_t size)
{
    if (reader->failed)
        return nullptr;
    if (size > reader->total || offset > reader->total - size) {
        reader->failed = 1;
        reader->failedOffset = offset;
        return nullptr;
    }
    return reader->data + offset;
}

WORD ReadU16(ByteReader *reader, size_t offset)
{
    const BYTE *bytes = BytesAt(reader, offset, 2);
    return bytes == nullptr ? (WORD)0 : (WORD)(bytes[0] | bytes[1] << 8);
}

DWORD ReadU32(ByteReader *reader, size_t offset)
{
    const BYTE *bytes = BytesAt(reader, offset, 4);
    if (bytes == nullptr)
        return 0;
    return (DWORD)bytes[0] | (DWORD)bytes[1] << 8 | (DWORD)bytes[2] << 16 | (DWORD)bytes[3] << 24;
}

static BYTE FoldLetter(BYTE letter)
{
    return letter >= 'A' && letter <= 'Z' ? (BYTE)(letter + 'a' - 'A') : letter;
}

int EqualLetters(const void *bytes, const char *text, size_t length)
{
    const BYTE *letters = (const BYTE *)bytes;
    for (size_t i = 0; i < length; i++)
        if (FoldLetter(letters[i]) != FoldLetter((BYTE)text[i]))
            return 0;
    return 1;
}

void UnitsToText(const BYTE *units, int count, char *text)
{
    WCHAR wide[260];
    char narrow[2 * 260]; // a double-byte code page writes up to two bytes a unit
    count = std::min(count, 260);
    for (int i = 0; i < count; i++)
        wide[i] = (WCHAR)(units[2 * i] | units[2 * i + 1] << 8);
    int length = 0;
    if (count > 0)
        length =
            WideCharToMultiByte(CP_ACP, 0, wide, count, narrow, sizeof narrow, nullptr, nullptr);
    length = std::clamp(length, 0, count);
    memcpy(text, narrow, (size_t)length);
    text[length] = 0;
}
