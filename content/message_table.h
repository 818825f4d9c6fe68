// The messages of a message table with their identifiers, as UTF-8: a count of blocks, each of them
// the lowest and the highest identifier and the offset of their entries, which follow each other;
// an entry is its length in bytes, its flags and the text (Microsoft's MESSAGE_RESOURCE_DATA).
#pragma once

#include "content/string_table.h"

// Appends the messages of a table, without the zeroes that fill their ends. Texts that are not
// UTF-16 are in a code page (0: the ANSI page). Returns false when a block or an entry does not lie
// in the table, an entry is no entry, or entries that blocks share are read so often that they are
// longer than the table: what could be read until then is appended.
bool ReadMessageTable(const BYTE *data, size_t size, UINT codePage, std::vector<TableText> *texts);
