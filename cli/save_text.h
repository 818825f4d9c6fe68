// String tables as text files: in UTF-8 with each string's own identifier, and what of them is lost
// in the code page.
#pragma once

#include "content/string_table.h"
#include "export/writers.h"

#include <string>

// A block's strings that are not empty, a line each: identifier, comma, tab, the text in UTF-8
// between double quotes with the escapes of JSON, carriage return and line feed. A block without a
// number has none: its strings count from 0. isWhole tells whether the block has all its strings.
std::string Utf8Texts(const BYTE *data, size_t size, const StringFormat *format, int64_t firstId,
                      bool *isWhole);

// Writes what of them is whole.
WriteOutcome WriteUtf8Texts(FILE *stream, const BYTE *data, size_t size, const StringFormat *format,
                            int64_t firstId);

// Whether a PE file's block has strings with characters that the ANSI code page lacks.
bool LosesCharacters(const BYTE *data, size_t size);

// Whether no line is written of a PE file's block in the code page.
bool ComesOutEmpty(const BYTE *data, size_t size);
