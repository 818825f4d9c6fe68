// UTF-8 texts that come from a file or name one, read letter by letter, and which letters could
// make them look like something else.
#pragma once

#include <cstddef>
#include <string>

struct Utf8Letter {
    char32_t code; // of what is no UTF-8, the byte itself
    size_t length; // bytes, at least 1
    bool isValid;
};

// The letter that begins at a place inside the text.
Utf8Letter LetterAt(const std::string &text, size_t at);

// Whether a letter steers a terminal, ends a line or turns the direction of the text behind it: the
// control characters of ASCII and Latin-1, and Unicode's separators and directions.
bool SteersText(char32_t code);
