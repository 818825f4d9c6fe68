// Counted UTF-16 strings, and blocks of them: a string table's strings one after another, each a
// 16-bit length in code units and the units, with no terminator (Microsoft's STRINGTABLE resource
// format).
#pragma once

#include "platform/win32.h"

#define STRING_TEXT_LENGTH 260

// A place in a block. Set data and size, and position to 0.
struct StringBlock {
    const BYTE *data;
    DWORD size;     // bytes
    DWORD position; // bytes from the block's start
};

// Takes the next string that is not empty and converts its first 260 code units to the ANSI code
// page; text holds at least STRING_TEXT_LENGTH + 1 bytes. A code unit of 0 ends the text early.
// Returns false when there is no further whole string: one that runs past the block is not read.
bool NextString(StringBlock *block, char *text);

// Converts count little-endian UTF-16 code units, at any address, to the ANSI code page and
// terminates the text after at most count bytes; text holds at least count + 1 bytes, and count is
// at most 260. A code unit of 0 becomes a 0 byte.
void UnitsToText(const BYTE *units, int count, char *text);

// Makes the control characters of a text visible, in place; text is a buffer of at least
// STRING_TEXT_LENGTH + 1 bytes. Carriage return, line feed and tab become a backslash and r, n or
// t, every other byte below 32 the byte 0xA4. The result is cut after 260 bytes.
void EscapeControlChars(char *text);
