// The strings of a string table's block with their identifiers, as UTF-8. Each block has 16 slots;
// the string of a slot has the identifier (block - 1) * 16 + slot. A PE file's strings are 16-bit
// counts of UTF-16 code units and the units (Microsoft's STRINGTABLE resource format), an NE file's
// 8-bit counts of bytes and the bytes (Microsoft's "Executable-File Header Format").
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <string>
#include <vector>

#define STRING_BLOCK_SLOTS 16

// The most that a block's slots take, in bytes; what lies behind them is no part of the block.
#define STRING_BLOCK_SIZE (STRING_BLOCK_SLOTS * (2 + 0xFFFF * 2))

// A text of a string table or a message table.
struct TableText {
    int64_t id;
    std::string text; // UTF-8, with the zeroes that it has; U+FFFD for what has no meaning
};

// How a block's strings lie in it.
struct StringFormat {
    bool isNe;     // 8-bit counts and bytes, else 16-bit counts and UTF-16
    UINT codePage; // of NE strings (platform/page_text.h); 0: the ANSI page
};

// The identifier of a block's first slot. Block 0, which no program can load a string of, gives a
// negative one.
int64_t FirstStringId(DWORD block);

// Appends the strings of a block that are not empty, numbered from firstId on. Returns false when
// the block ends before its last slot does: the strings that are whole are appended.
bool ReadStringTable(const BYTE *data, size_t size, const StringFormat *format, int64_t firstId,
                     std::vector<TableText> *texts);
