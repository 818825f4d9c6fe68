// The ANSI code page: the single-byte Windows page of the user's language, 1252 when the language
// has none of its own.
#pragma once

#include "platform/win32/types.h"

#include <string>
#include <string_view>

// One single-byte page, both ways.
struct CodePage {
    WCHAR units[256];  // what each byte means
    BYTE bytes[65536]; // the byte of each code unit; 0 for those the page lacks
};

// Fills the tables of a Windows page (874, 1250 to 1258). Returns false, with the tables those of
// ISO 8859-1, when the system's converter does not know it.
bool FillCodePage(unsigned number, CodePage *page);

// The page number for a locale name as the environment gives it ("ru_RU.UTF-8": 1251).
unsigned CodePageOfLocale(std::string_view locale);

// The user's page, made at its first use from LC_ALL, LC_CTYPE or LANG.
const CodePage &AnsiCodePage();

// A text of the user's page as UTF-8, for showing.
std::string TextToUtf8(std::string_view text);
