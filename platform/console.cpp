#include "platform/console.h"

// Whether the byte at a place belongs to a UTF-8 character that an earlier byte begins.
static bool IsContinued(const std::string &text, size_t at)
{
    for (size_t back = 1; back <= 3 && back <= at; ++back) {
        const unsigned char byte = static_cast<unsigned char>(text[at - back]);
        if (byte >= 0xC0)
            return byte >= (back == 1 ? 0xC2 : back == 2 ? 0xE0 : 0xF0);
        if (byte < 0x80)
            return false;
    }
    return false;
}

std::string SafeText(FILE *stream, const std::string &text)
{
    if (!IsTerminal(stream))
        return text;
    std::string safe;
    for (size_t i = 0; i < text.size(); ++i) {
        const unsigned char byte = static_cast<unsigned char>(text[i]);
        const unsigned char next =
            i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0;
        if (byte < 32 || byte == 127) {
            // U+2400 and on are the pictures of the control characters; U+2421 is DEL's.
            safe += "\xE2\x90";
            safe += static_cast<char>(byte == 127 ? 0xA1 : 0x80 + byte);
        } else if (byte == 0xC2 && next >= 0x80 && next < 0xA0) {
            safe += "\xEF\xBF\xBD"; // the second set of control characters has no pictures
            ++i;
        } else if (byte >= 0x80 && byte < 0xA0 && !IsContinued(text, i)) {
            safe += "\xEF\xBF\xBD"; // not UTF-8, and a control character to a terminal of 8 bits
        } else {
            safe += static_cast<char>(byte);
        }
    }
    return safe;
}
