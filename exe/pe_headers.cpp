#include "exe/pe_headers.h"

#include <algorithm>
#include <cstring>

#define PE_HEADERS_SIZE 248 // signature, file header and an optional header of 32 bits
#define OPTIONAL_HEADER 24  // where the optional header begins
#define MAGIC_64_BIT 0x20B
#define FLAG_LIBRARY 0x2000

bool FindPeHeaders(ByteReader image, size_t *headers)
{
    *headers = ReadU32(&image, 60);
    BytesAt(&image, *headers, PE_HEADERS_SIZE);
    return ReadU32(&image, *headers) == PE_SIGNATURE;
}

bool Is64BitImage(ByteReader image, size_t headers)
{
    return ReadU16(&image, headers + OPTIONAL_HEADER) == MAGIC_64_BIT;
}

bool RunsWhenLoaded(ByteReader image, size_t headers)
{
    const bool isLibrary = ReadU16(&image, headers + 22) & FLAG_LIBRARY;
    return isLibrary && ReadU32(&image, headers + OPTIONAL_HEADER + 16) != 0;
}

void TakeSectionHeader(const BYTE *header, PeSection *section)
{
    ByteReader reader = OpenBytes(header, SECTION_HEADER_SIZE);
    memcpy(section->name, header, sizeof section->name);
    section->length = ReadU32(&reader, 8);
    section->address = ReadU32(&reader, 12);
    section->storedLength = ReadU32(&reader, 16);
    section->fileOffset = ReadU32(&reader, 20);
}

// Reads the section header at an offset. Returns false when it does not lie in the image.
static bool ReadSection(ByteReader image, size_t offset, PeSection *section)
{
    const BYTE *header = BytesAt(&image, offset, SECTION_HEADER_SIZE);
    if (header != nullptr)
        TakeSectionHeader(header, section);
    return header != nullptr;
}

bool FindSection(ByteReader image, size_t headers, const char *name, PeSection *section)
{
    const int count = ReadU16(&image, headers + 6);
    const size_t compared = std::min<size_t>(strlen(name) + 1, SECTION_NAME_LENGTH);
    for (int i = 0; i < count; i++) {
        const size_t offset = headers + PE_HEADERS_SIZE + (size_t)i * SECTION_HEADER_SIZE;
        if (!ReadSection(image, offset, section))
            return false;
        if (EqualLetters(section->name, name, compared))
            return true;
    }
    return false;
}

bool FindResourceSection(ByteReader image, size_t headers, PeSection *section)
{
    const size_t optional = headers + OPTIONAL_HEADER;
    const DWORD directoryCount = ReadU32(&image, optional + 92);
    const DWORD address = ReadU32(&image, optional + 112);
    const size_t table = optional + ReadU16(&image, headers + 20);
    const int count = ReadU16(&image, headers + 6);
    if (image.failed || directoryCount < 3 || address == 0)
        return false;
    for (int i = 0; i < count; i++) {
        if (!ReadSection(image, table + (size_t)i * SECTION_HEADER_SIZE, section))
            return false;
        if (address >= section->address && address - section->address < section->length)
            return true;
    }
    return false;
}
