#include "platform/native/kernel/module_image.h"

#include <algorithm>

constexpr uint32_t subdirectory = 0x80000000u; // in an entry's offset; in its name: a text
constexpr size_t notThere = SIZE_MAX;

static char16_t FoldCase(char16_t unit)
{
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

// The bytes from an address to the end of its section; none when `size` bytes are not there.
static ByteReader OpenAddress(const ModuleImage &image, uint32_t address, size_t size)
{
    for (const ImageSection &section : image.sections) {
        if (address < section.address)
            continue;
        ByteReader whole = OpenBytes(image.bytes + section.fileOffset, section.size);
        const size_t inside = address - section.address;
        if (const uint8_t *bytes = BytesAt(&whole, inside, size))
            return OpenBytes(bytes, section.size - inside);
    }
    return {};
}

static bool ReadSections(ByteReader file, size_t table, size_t count, ModuleImage *image)
{
    constexpr size_t recordSize = 40;
    constexpr uint32_t pageSize = 0x1000;
    if (!BytesAt(&file, table, count * recordSize))
        return false;
    for (size_t i = 0; i < count; ++i) {
        const size_t record = table + i * recordSize;
        const uint32_t virtualSize = ReadU32(&file, record + 8);
        const uint32_t address = ReadU32(&file, record + 12);
        size_t size = ReadU32(&file, record + 16);
        const size_t offset = ReadU32(&file, record + 20);
        // The file's bytes are mapped page by page, as far as the section reaches in memory.
        if (virtualSize != 0)
            size = std::min(size, (size_t{virtualSize} + pageSize - 1) / pageSize * pageSize);
        if (offset < image->size)
            image->sections.push_back({address, offset, std::min(size, image->size - offset)});
    }
    return true;
}

static bool EntryMatches(ByteReader resources, uint32_t entryName, const ResourceKey &key)
{
    if ((entryName & subdirectory) == 0)
        return key.isNumber && entryName == key.number;
    if (key.isNumber)
        return false;
    const size_t text = entryName & ~subdirectory;
    const size_t length = ReadU16(&resources, text);
    if (length != key.text.size() || !BytesAt(&resources, text + 2, 2 * length))
        return false;
    for (size_t i = 0; i < length; ++i) {
        const char16_t unit = ReadU16(&resources, text + 2 + 2 * i);
        if (FoldCase(unit) != FoldCase(key.text[i]))
            return false;
    }
    return true;
}

// The number of entries of a directory that lie in the resource section.
static size_t CountEntries(ByteReader resources, size_t directory)
{
    if (!BytesAt(&resources, directory, 16))
        return 0;
    const size_t count =
        size_t{ReadU16(&resources, directory + 12)} + ReadU16(&resources, directory + 14);
    return std::min(count, (resources.total - directory - 16) / 8);
}

// The offset that the matching entry of a directory holds, with its subdirectory mark, or notThere.
static size_t FindEntry(ByteReader resources, size_t directory, const ResourceKey &key)
{
    const size_t count = CountEntries(resources, directory);
    for (size_t i = 0; i < count; ++i) {
        const size_t entry = directory + 16 + 8 * i;
        if (EntryMatches(resources, ReadU32(&resources, entry), key))
            return ReadU32(&resources, entry + 4);
    }
    return notThere;
}

static size_t ChooseLanguage(ByteReader resources, size_t directory)
{
    constexpr uint32_t neutral = 0;
    constexpr uint32_t english = 0x409; // of the United States
    size_t chosen = notThere;
    int best = 3;
    const size_t count = CountEntries(resources, directory);
    for (size_t i = 0; i < count && best > 0; ++i) {
        const size_t entry = directory + 16 + 8 * i;
        const uint32_t language = ReadU32(&resources, entry);
        const int rank = language == neutral ? 0 : language == english ? 1 : 2;
        if (rank < best) {
            best = rank;
            chosen = ReadU32(&resources, entry + 4);
        }
    }
    return chosen;
}

bool ReadModuleImage(const uint8_t *bytes, size_t size, ModuleImage *image)
{
    *image = {bytes, size, {}, {}};
    ByteReader file = OpenBytes(bytes, size);
    const size_t header = ReadU32(&file, 60);
    if (ReadU16(&file, 0) != 0x5A4D || ReadU32(&file, header) != 0x00004550)
        return false;
    const size_t sectionCount = ReadU16(&file, header + 6);
    const size_t optionalSize = ReadU16(&file, header + 20);
    const size_t optional = header + 24;
    if (!BytesAt(&file, optional, optionalSize))
        return false;
    const uint16_t magic = optionalSize < 2 ? uint16_t{0} : ReadU16(&file, optional);
    const size_t directories = magic == 0x10B ? 96 : magic == 0x20B ? 112 : 0;
    if (directories == 0 || directories > optionalSize ||
        !ReadSections(file, optional + optionalSize, sectionCount, image))
        return false;
    // The third directory is the resources'.
    const uint32_t directoryCount = ReadU32(&file, optional + directories - 4);
    if (directoryCount < 3 || optionalSize < directories + 3 * 8)
        return true;
    const uint32_t address = ReadU32(&file, optional + directories + 2 * 8);
    if (address != 0)
        image->resources = OpenAddress(*image, address, 16);
    return true;
}

bool FindImageResource(const ModuleImage &image, const ResourceKey &type, const ResourceKey &name,
                       ResourcePlace *place)
{
    ByteReader resources = image.resources;
    const size_t names = FindEntry(resources, 0, type);
    if (names == notThere || (names & subdirectory) == 0)
        return false;
    const size_t languages = FindEntry(resources, names & ~size_t{subdirectory}, name);
    if (languages == notThere || (languages & subdirectory) == 0)
        return false;
    const size_t data = ChooseLanguage(resources, languages & ~size_t{subdirectory});
    if (data == notThere || (data & subdirectory) != 0 || !BytesAt(&resources, data, 16))
        return false;
    const uint32_t address = ReadU32(&resources, data);
    const uint32_t size = ReadU32(&resources, data + 4);
    const ByteReader found = OpenAddress(image, address, size);
    if (!found.data)
        return false;
    *place = {static_cast<size_t>(found.data - image.bytes), size};
    return true;
}
