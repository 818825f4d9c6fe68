// The one way to read bytes that came from a file: little-endian values at an offset, each checked
// against the length. The first failure sticks and its offset is kept; every read from then on
// gives zero. So: read a whole record, then ask once whether it was there.
#pragma once

#include "platform/win32.h"

struct ByteReader {
    const BYTE *data;
    size_t total;        // bytes
    int failed;          // 1 once a read has left the data
    size_t failedOffset; // where the first such read began
};

// Starts reading at data, which must outlive the reader.
ByteReader OpenBytes(const void *data, size_t total);

// A pointer to size bytes at offset, or NULL (and the reader has failed) when they do not all lie
// in the data.
const BYTE *BytesAt(ByteReader *reader, size_t offset, size_t size);

WORD ReadU16(ByteReader *reader, size_t offset);
DWORD ReadU32(ByteReader *reader, size_t offset);

// Whether the bytes equal the text over its length, A to Z folded to lower case, whatever the
// locale says.
int EqualLetters(const void *bytes, const char *text, size_t length);

// Converts count little-endian UTF-16 code units, at any address, to the ANSI code page and
// terminates the text after at most count bytes; text holds at least count + 1 bytes, and count is
// at most 260. A code unit of 0 becomes a 0 byte.
void UnitsToText(const BYTE *units, int count, char *text);
