#include "platform/utf8.h"

Utf8Letter LetterAt(const std::string &text, size_t at)
{
    const auto byteAt = [&text](size_t place) -> unsigned {
        return place < text.size() ? static_cast<unsigned char>(text[place]) : 0;
    };
    const unsigned first = byteAt(at);
    const size_t length = first < 0x80   ? 1
                          : first < 0xC2 ? 0
                          : first < 0xE0 ? 2
                          : first < 0xF0 ? 3
                                         : 4;
    const Utf8Letter invalid = {first, 1, false};
    if (length == 1)
        return {first, 1, true};
    if (length == 0 || first > 0xF4)
        return invalid;
    char32_t code = first & (0xFFu >> (length + 1));
    for (size_t i = 1; i < length; ++i) {
        if ((byteAt(at + i) & 0xC0) != 0x80)
            return invalid;
        code = code << 6 | (byteAt(at + i) & 0x3F);
    }
    const bool isTooLong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    if (isTooLong || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000))
        return invalid;
    return {code, length, true};
}

bool SteersText(char32_t code)
{
    const bool isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
    const bool turns = code == 0x061C || code == 0x200E || code == 0x200F ||
                       (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    return isControl || turns || code == 0x2028 || code == 0x2029;
}
