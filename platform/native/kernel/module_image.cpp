#include "platform/native/kernel/module_image.h"

#include <algorithm>

namespace
{

const uint32_t subdirectory = 0x80000000u; // in an entry's offset; in its name: a text
const size_t notThere = SIZE_MAX;

// Little-endian reads; 0 outside the bytes.
bool Holds(size_t total, size_t offset, size_t size)
{
    return size <= total && offset <= total - size;
}

uint16_t Read16(const uint8_t *bytes, size_t total, size_t offset)
{
    if (!Holds(total, offset, 2))
        return 0;
    return (uint16_t)(bytes[offset] | bytes[offset + 1] << 8);
}

uint32_t Read32(const uint8_t *bytes, size_t total, size_t offset)
{
    if (!Holds(total, offset, 4))
        return 0;
    return (uint32_t)Read16(bytes, total, offset) | (uint32_t)Read16(bytes, total, offset + 2)
                                                        << 16;
}

char16_t FoldCase(char16_t unit)
{
    return unit >= u'a' && unit <= u'z' ? (char16_t)(unit - u'a' + u'A') : unit;
}

// The file offset of `size` bytes at an address, and in *left how many the section has from there.
size_t FileOffset(const ModuleImage &image, uint32_t address, size_t size, size_t *left)
{
    for (const ImageSection &section : image.sections) {
        if (address < section.address || !Holds(section.size, address - section.address, size))
            continue;
        const size_t inside = address - section.address;
        *left = section.size - inside;
        return section.fileOffset + inside;
    }
    return notThere;
}

bool ReadSections(ModuleImage *image, size_t table, size_t count)
{
    const size_t recordSize = 40;
    const uint32_t pageSize = 0x1000;
    if (!Holds(image->size, table, count * recordSize))
        return false;
    for (size_t i = 0; i < count; i++) {
        const size_t record = table + i * recordSize;
        const uint32_t virtualSize = Read32(image->bytes, image->size, record + 8);
        const uint32_t address = Read32(image->bytes, image->size, record + 12);
        size_t size = Read32(image->bytes, image->size, record + 16);
        const size_t offset = Read32(image->bytes, image->size, record + 20);
        // The file's bytes are mapped page by page, as far as the section reaches in memory.
        if (virtualSize != 0)
            size = std::min(size, ((size_t)virtualSize + pageSize - 1) / pageSize * pageSize);
        if (offset < image->size)
            image->sections.push_back({address, offset, std::min(size, image->size - offset)});
    }
    return true;
}

bool EntryMatches(const ModuleImage &image, uint32_t entryName, const ResourceKey &key)
{
    if ((entryName & subdirectory) == 0)
        return key.isNumber && entryName == key.number;
    if (key.isNumber)
        return false;
    const size_t text = entryName & ~subdirectory;
    const size_t length = Read16(image.resources, image.resourcesSize, text);
    if (length != key.text.size() || !Holds(image.resourcesSize, text, 2 + 2 * length))
        return false;
    for (size_t i = 0; i < length; i++) {
        const uint16_t unit = Read16(image.resources, image.resourcesSize, text + 2 + 2 * i);
        if (FoldCase((char16_t)unit) != FoldCase(key.text[i]))
            return false;
    }
    return true;
}

// The number of entries of a directory that lie in the resource section.
size_t CountEntries(const ModuleImage &image, size_t directory)
{
    if (!Holds(image.resourcesSize, directory, 16))
        return 0;
    const size_t count = (size_t)Read16(image.resources, image.resourcesSize, directory + 12) +
                         Read16(image.resources, image.resourcesSize, directory + 14);
    return std::min(count, (image.resourcesSize - directory - 16) / 8);
}

// The offset that the matching entry of a directory holds, with its subdirectory mark, or notThere.
size_t FindEntry(const ModuleImage &image, size_t directory, const ResourceKey &key)
{
    const size_t count = CountEntries(image, directory);
    for (size_t i = 0; i < count; i++) {
        const size_t entry = directory + 16 + 8 * i;
        if (EntryMatches(image, Read32(image.resources, image.resourcesSize, entry), key))
            return Read32(image.resources, image.resourcesSize, entry + 4);
    }
    return notThere;
}

size_t ChooseLanguage(const ModuleImage &image, size_t directory)
{
    const uint32_t neutral = 0;
    const uint32_t english = 0x409; // of the United States
    size_t chosen = notThere;
    int best = 3;
    const size_t count = CountEntries(image, directory);
    for (size_t i = 0; i < count && best > 0; i++) {
        const size_t entry = directory + 16 + 8 * i;
        const uint32_t language = Read32(image.resources, image.resourcesSize, entry);
        const int rank = language == neutral ? 0 : language == english ? 1 : 2;
        if (rank < best) {
            best = rank;
            chosen = Read32(image.resources, image.resourcesSize, entry + 4);
        }
    }
    return chosen;
}

} // namespace

bool ReadModuleImage(const uint8_t *bytes, size_t size, ModuleImage *image)
{
    *image = {bytes, size, {}, nullptr, 0};
    const size_t header = Read32(bytes, size, 60);
    if (Read16(bytes, size, 0) != 0x5A4D || !Holds(size, header, 24) ||
        Read32(bytes, size, header) != 0x00004550)
        return false;
    const size_t sectionCount = Read16(bytes, size, header + 6);
    const size_t optionalSize = Read16(bytes, size, header + 20);
    const size_t optional = header + 24;
    if (!Holds(size, optional, optionalSize))
        return false;
    const uint16_t magic = optionalSize < 2 ? (uint16_t)0 : Read16(bytes, size, optional);
    const size_t directories = magic == 0x10B ? 96 : magic == 0x20B ? 112 : 0;
    if (directories == 0 || directories > optionalSize ||
        !ReadSections(image, optional + optionalSize, sectionCount))
        return false;
    // The third directory is the resources'.
    const uint32_t directoryCount = Read32(bytes, size, optional + directories - 4);
    if (directoryCount < 3 || optionalSize < directories + 3 * 8)
        return true;
    const uint32_t address = Read32(bytes, size, optional + directories + 2 * 8);
    size_t left = 0;
    const size_t offset = address == 0 ? notThere : FileOffset(*image, address, 16, &left);
    if (offset != notThere) {
        image->resources = bytes + offset;
        image->resourcesSize = left;
    }
    return true;
}

bool FindImageResource(const ModuleImage &image, const ResourceKey &type, const ResourceKey &name,
                       ResourcePlace *place)
{
    if (image.resources == nullptr)
        return false;
    const size_t names = FindEntry(image, 0, type);
    if (names == notThere || (names & subdirectory) == 0)
        return false;
    const size_t languages = FindEntry(image, names & ~(size_t)subdirectory, name);
    if (languages == notThere || (languages & subdirectory) == 0)
        return false;
    const size_t data = ChooseLanguage(image, languages & ~(size_t)subdirectory);
    if (data == notThere || (data & subdirectory) != 0 || !Holds(image.resourcesSize, data, 16))
        return false;
    const uint32_t address = Read32(image.resources, image.resourcesSize, data);
    place->size = Read32(image.resources, image.resourcesSize, data + 4);
    size_t left = 0;
    place->fileOffset = FileOffset(image, address, place->size, &left);
    return place->fileOffset != notThere;
}
