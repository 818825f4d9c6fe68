#include "platform/console.h"

#include "platform/utf8.h"

std::string SafeText(const std::string &text)
{
    std::string safe;
    for (size_t at = 0; at < text.size();) {
        const Utf8Letter letter = LetterAt(text, at);
        if (!SteersText(letter.code)) {
            safe.append(text, at, letter.length);
        } else if (letter.code < 0x20 || letter.code == 0x7F) {
            // U+2400 and on are the pictures of the control characters; U+2421 is DEL's.
            safe += "\xE2\x90";
            safe += static_cast<char>(letter.code == 0x7F ? 0xA1 : 0x80 + letter.code);
        } else {
            safe += "\xEF\xBF\xBD"; // the others have no pictures
        }
        at += letter.length;
    }
    return safe;
}
