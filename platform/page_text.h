// Texts that files hold, in a code page or as UTF-16, as UTF-8. What differs between the systems
// stands in a source file for each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Whether the system knows the characters of a code page, by its Windows number (932, 1251, ...). 0
// is the ANSI page and is always known.
bool KnowsCodePage(unsigned page);

// length bytes of a code page, zeroes included. What has no meaning in the page becomes U+FFFD, or
// a character of the private area where Windows has it so; of a page that is not known, every byte
// above 127 does.
std::string PageTextToUtf8(unsigned page, const char *text, size_t length);

// Little-endian UTF-16 code units at any address, zeroes included; a surrogate without its pair
// becomes U+FFFD.
std::string UnitsToUtf8(const uint8_t *units, size_t count);
