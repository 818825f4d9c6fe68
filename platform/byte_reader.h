// The one way to read numbers out of bytes that came from a file: little-endian values, each
// checked against the length. The first failure sticks; every read from then on gives zero. So:
// read a whole record, then ask once whether it was there.
#pragma once

#include <cstddef>
#include <cstdint>

struct ByteReader {
    const uint8_t *data; // the caller's
    size_t total;        // bytes
    size_t position;     // bytes from the start; where the next Take begins
    bool failed;         // whether a read has left the data
};

// Starts reading at data, which must outlive the reader.
ByteReader OpenBytes(const void *data, size_t total);

// A pointer to size bytes at offset, or NULL (and the reader has failed) when they do not all lie
// in the data.
const uint8_t *BytesAt(ByteReader *reader, size_t offset, size_t size);

// The value at an offset; 0 when it does not lie in the data.
uint16_t ReadU16(ByteReader *reader, size_t offset);
uint32_t ReadU32(ByteReader *reader, size_t offset);

// The value at the position, which moves behind it; 0, and the position stays, on failure.
uint16_t TakeU16(ByteReader *reader);
uint32_t TakeU32(ByteReader *reader);

// Moves the position over size bytes; it stays when they do not all lie in the data.
void SkipBytes(ByteReader *reader, size_t size);

// Whether the bytes equal the text over its length, A to Z folded to lower case, whatever the
// locale says. Both are that long.
bool EqualLetters(const void *bytes, const char *text, size_t length);
