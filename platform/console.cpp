#include "platform/console.h"

std::string SafeText(FILE *stream, const std::string &text)
{
    if (!IsTerminal(stream))
        return text;
    std::string safe;
    for (size_t i = 0; i < text.size(); i++) {
        const unsigned char byte = (unsigned char)text[i];
        const unsigned char next = i + 1 < text.size() ? (unsigned char)text[i + 1] : 0;
        if (byte < 32 || byte == 127) {
            // U+2400 and on are the pictures of the control characters; U+2421 is DEL's.
            safe += "\xE2\x90";
            safe += (char)(byte == 127 ? 0xA1 : 0x80 + byte);
        } else if (byte == 0xC2 && next >= 0x80 && next < 0xA0) {
            safe += "\xEF\xBF\xBD"; // the second set of control characters has no pictures
            i++;
        } else {
            safe += (char)byte;
        }
    }
    return safe;
}
