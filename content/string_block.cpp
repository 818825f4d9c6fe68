#include "content/string_block.h"

#include "platform/byte_reader.h"

#include <algorithm>
#include <cstring>

void UnitsToText(const BYTE *units, int count, char *text)
{
    WCHAR wide[STRING_TEXT_LENGTH];
    char narrow[2 * STRING_TEXT_LENGTH]; // a double-byte code page writes up to two bytes a unit
    count = std::min(count, STRING_TEXT_LENGTH);
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

bool NextString(StringBlock *block, char *text)
{
    for (;;) {
        ByteReader reader = OpenBytes(block->data, block->size);
        const DWORD length = ReadU16(&reader, block->position);
        const BYTE *units = BytesAt(&reader, (size_t)block->position + 2, (size_t)length * 2);
        if (reader.failed)
            return false;
        block->position += 2 + length * 2;
        const int kept = (int)std::min<DWORD>(length, STRING_TEXT_LENGTH);
        UnitsToText(units, kept, text);
        if (text[0] != 0)
            return true;
    }
}

void EscapeControlChars(char *text)
{
    char escaped[STRING_TEXT_LENGTH + 2];
    int length = 0;
    for (const char *from = text; *from != 0 && length < STRING_TEXT_LENGTH; from++) {
        const unsigned char code = (unsigned char)*from;
        const char *letter = code == '\r' ? "r" : code == '\n' ? "n" : code == '\t' ? "t" : nullptr;
        if (letter != nullptr) {
            escaped[length++] = '\\';
            escaped[length++] = *letter;
        } else {
            escaped[length++] = code < 32 ? (char)0xA4 : (char)code;
        }
    }
    length = std::min(length, STRING_TEXT_LENGTH);
    memcpy(text, escaped, (size_t)length);
    text[length] = 0;
}
