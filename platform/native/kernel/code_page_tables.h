// The single-byte Windows pages that a language can have. They are the program's own, so that a
// text means the same on every machine, whatever converters it has.
#pragma once

#include <cstddef>

#include "platform/win32/types.h"

// One page; bytes below 0x80 mean their own number in each.
struct CodePageTable {
    unsigned page;
    WCHAR units[128]; // what each byte from 0x80 on means
};

constexpr size_t codePageCount = 10;
extern const CodePageTable codePageTables[codePageCount]; // 874, 1250 to 1258
