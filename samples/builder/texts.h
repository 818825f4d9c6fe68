// Blocks of a string table, version records and other texts, as they lie in a resource.
#pragma once

#include "samples/builder/bytes.h"

#include <string>

// A PE file's block: 16 strings, each a 16-bit count of UTF-16 code units and the units. Strings
// that the list lacks are empty; more than 16 are taken too.
Bytes MakeStringBlock(const std::vector<std::u16string> &strings);

// An NE file's block: 16 strings, each an 8-bit count and as many 8-bit characters.
Bytes MakeNeStringBlock(const std::vector<std::string> &strings);

// Adds a text's characters and a 0, each as a byte or, wide, as a code unit of the same value.
void AddEndedText(Bytes &bytes, std::string_view text, bool wide);

// A version record with its fixed numbers and these texts, in US English: in the form of PE files,
// which is wide, or of NE files.
Bytes MakeVersion(std::string_view fileName, std::string_view description, bool wide);
