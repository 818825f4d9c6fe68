// The texts of string tables and message tables, as the commands tell them.
#pragma once

#include "content/string_table.h"
#include "exe/survey.h"

// Whether a resource is a block of strings or a table of messages.
bool HoldsStrings(const SurveyedResource &resource);
bool HoldsMessages(const SurveyedResource &resource);

// Reads the texts of such a resource; a code page is that of texts that are not UTF-16 (0: the ANSI
// page). Returns false when it is damaged: what could be read is there.
bool ReadTexts(FilePages *pages, const Survey &survey, const SurveyedResource &resource,
               UINT codePage, std::vector<TableText> *texts);

// What is wrong with such a resource, in a sentence that ends with `what`.
std::string DamageText(const SurveyedResource &resource, const char *what);

extern const char textsPastBound[]; // of one that is not read

// The identifier of a text: a string's in decimal, a message's in hexadecimal. A block with a name
// has none; its strings are the name's, by their slot (NAME:SLOT).
std::string TextId(const SurveyedResource &resource, const TableText &text);
