// The ANSI code page: the single-byte Windows page of the user's language, 1252 when the language
// has none of its own.
#pragma once

#include <string>
#include <string_view>

#include "platform/byte_reader.h"
#include "platform/win32/types.h"

// One single-byte page, both ways.
struct CodePage {
    WCHAR units[256];  // what each byte means
    BYTE bytes[65536]; // the byte of each code unit; 0 for those the page lacks
};

// Fills the tables of a Windows page (874, 1250 to 1258). Returns false for any other, which leaves
// them as they are.
bool FillCodePage(unsigned number, CodePage *page);

// The page number for a locale name as the environment gives it ("ru_RU.UTF-8": 1251).
unsigned CodePageOfLocale(std::string_view locale);

// The user's page, made at its first use, for the rest of the process, from LC_ALL, LC_CTYPE or
// LANG.
const CodePage &AnsiCodePage();

// Little-endian UTF-16 code units, at any address, as a text of the user's page: a byte for each
// unit, "?" for what the page lacks.
std::string TextOfUnits(const uint8_t *units, size_t count);

// Takes code units up to the first 0, which is taken too, as a text of the user's page. Where there
// is no 0 the reader fails, and the text is what there is.
std::string TakeWideText(ByteReader *reader);
