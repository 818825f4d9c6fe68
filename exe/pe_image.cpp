#include "exe/pe_image.h"

#include <algorithm>
#include <cstring>

#define FILE_HEADER_SIZE 24      // with the signature
#define OPTIONAL_HEADER_SIZE 136 // as much of it as is looked at, of 64 bits
#define MAGIC_32_BIT 0x10B
#define MAGIC_64_BIT 0x20B
#define FLAG_LIBRARY 0x2000
#define RESOURCE_DIRECTORY 2

// Returns false when they do not all lie in the file.
static bool AddSections(FilePages *pages, uint64_t table, int count, PeImage *image)
{
    for (int i = 0; i < count; i++) {
        BYTE header[SECTION_HEADER_SIZE];
        if (!ReadPages(pages, table + (uint64_t)i * sizeof header, header, sizeof header))
            return false;
        PeSection section;
        TakeSectionHeader(header, &section);
        image->sections.push_back(section);
    }
    std::stable_sort(image->sections.begin(), image->sections.end(),
                     [](const PeSection &a, const PeSection &b) { return a.address < b.address; });
    return true;
}

bool ReadPeImage(FilePages *pages, uint64_t headers, PeImage *image)
{
    BYTE bytes[FILE_HEADER_SIZE + OPTIONAL_HEADER_SIZE] = {};
    const uint64_t behind = pages->length - std::min(headers, pages->length);
    const size_t length = (size_t)std::min<uint64_t>(sizeof bytes, behind);
    if (length < FILE_HEADER_SIZE + 2 || !ReadPages(pages, headers, bytes, length))
        return false;
    ByteReader reader = OpenBytes(bytes, sizeof bytes);
    const WORD magic = ReadU16(&reader, FILE_HEADER_SIZE);
    if (ReadU32(&reader, 0) != PE_SIGNATURE || (magic != MAGIC_32_BIT && magic != MAGIC_64_BIT))
        return false;
    *image = {};
    image->is64Bit = magic == MAGIC_64_BIT;
    image->machine = ReadU16(&reader, 4);
    image->isLibrary = (ReadU16(&reader, 22) & FLAG_LIBRARY) != 0;
    const size_t directories = FILE_HEADER_SIZE + (image->is64Bit ? 112 : 96);
    if (ReadU32(&reader, directories - 4) > RESOURCE_DIRECTORY)
        image->resources = ReadU32(&reader, directories + RESOURCE_DIRECTORY * 8);

    const DWORD headersSize = ReadU32(&reader, FILE_HEADER_SIZE + 60);
    image->sections.push_back({{}, 0, headersSize, 0, headersSize});
    return AddSections(pages, headers + FILE_HEADER_SIZE + ReadU16(&reader, 20),
                       ReadU16(&reader, 6), image);
}

PePlace FindPePlace(const PeImage *image, DWORD address, DWORD size, uint64_t *offset)
{
    const auto behind = std::upper_bound(
        image->sections.begin(), image->sections.end(), address,
        [](DWORD wanted, const PeSection &section) { return wanted < section.address; });
    const PeSection *section = &*(behind - 1); // the headers' address is 0
    const DWORD inside = address - section->address;
    if (inside >= std::max(section->length, section->storedLength))
        return PlaceNowhere;
    const uint64_t end = (uint64_t)inside + size;
    if (inside >= section->storedLength || (end > section->storedLength && end <= section->length))
        return PlaceNotStored;
    *offset = (uint64_t)section->fileOffset + inside;
    return PlaceStored;
}

const PeSection *FindPeSection(const PeImage *image, const char *name)
{
    const size_t compared = std::min<size_t>(strlen(name) + 1, SECTION_NAME_LENGTH);
    for (const PeSection &section : image->sections)
        if (EqualLetters(section.name, name, compared))
            return &section;
    return nullptr;
}
