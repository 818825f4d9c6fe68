#include "samples/builder/bytes.h"

#include <cstdio>

void AddU8(Bytes &bytes, unsigned value)
{
    bytes.push_back((unsigned char)value);
}

void AddU16(Bytes &bytes, unsigned value)
{
    AddU8(bytes, value & 0xff);
    AddU8(bytes, (value >> 8) & 0xff);
}

void AddU32(Bytes &bytes, uint32_t value)
{
    AddU16(bytes, value & 0xffff);
    AddU16(bytes, value >> 16);
}

void AddU64(Bytes &bytes, uint64_t value)
{
    AddU32(bytes, (uint32_t)value);
    AddU32(bytes, (uint32_t)(value >> 32));
}

void AddBytes(Bytes &bytes, const Bytes &more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

void AddText(Bytes &bytes, std::string_view text)
{
    bytes.insert(bytes.end(), text.begin(), text.end());
}

Bytes Text(std::string_view text)
{
    return Bytes(text.begin(), text.end());
}

void PadTo(Bytes &bytes, size_t unit)
{
    bytes.resize((bytes.size() + unit - 1) & ~(unit - 1));
}

void PutU16(Bytes &bytes, size_t offset, unsigned value)
{
    bytes.at(offset) = (unsigned char)value;
    bytes.at(offset + 1) = (unsigned char)(value >> 8);
}

void PutU32(Bytes &bytes, size_t offset, uint32_t value)
{
    PutU16(bytes, offset, value & 0xffff);
    PutU16(bytes, offset + 2, value >> 16);
}

uint32_t GetU16(const Bytes &bytes, size_t offset)
{
    return bytes.at(offset) | (uint32_t)bytes.at(offset + 1) << 8;
}

uint32_t GetU32(const Bytes &bytes, size_t offset)
{
    return GetU16(bytes, offset) | GetU16(bytes, offset + 2) << 16;
}

bool WriteBytes(const char *path, const Bytes &bytes)
{
    FILE *file = fopen(path, "wb");
    if (!file)
        return false;
    bool written = bytes.empty() || fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return fclose(file) == 0 && written;
}
