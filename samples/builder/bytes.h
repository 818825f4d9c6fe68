// Byte strings and little-endian numbers in them, as every format here has them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

typedef std::vector<unsigned char> Bytes;

// Add a number, a run of bytes or a text's characters (without terminator) at the end.
void AddU8(Bytes &bytes, unsigned value);
void AddU16(Bytes &bytes, unsigned value);
void AddU32(Bytes &bytes, uint32_t value);
void AddU64(Bytes &bytes, uint64_t value);
void AddBytes(Bytes &bytes, const Bytes &more);
void AddText(Bytes &bytes, std::string_view text);

// A text's characters alone.
Bytes Text(std::string_view text);

// Adds bytes of 0 up to the next multiple of unit, a power of two.
void PadTo(Bytes &bytes, size_t unit);

// Overwrite or read a number at an offset, which must lie inside.
void PutU16(Bytes &bytes, size_t offset, unsigned value);
void PutU32(Bytes &bytes, size_t offset, uint32_t value);
uint32_t GetU16(const Bytes &bytes, size_t offset);
uint32_t GetU32(const Bytes &bytes, size_t offset);

// Writes the bytes as the file's whole content. False when the file could not be written.
bool WriteBytes(const char *path, const Bytes &bytes);
