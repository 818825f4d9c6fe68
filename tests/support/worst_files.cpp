#include "tests/support/worst_files.h"

#include <algorithm>

#define MOST_ENTRIES (2 * 65535u) // of one directory: named ones and numbered ones

static const uint32_t isBelow = 0x80000000; // an offset's mark: a directory, or a name

static void AddDirectory(Bytes &section, unsigned count, uint32_t name, uint32_t offset)
{
    const unsigned named = std::min(count, MOST_ENTRIES / 2);
    section.resize(section.size() + 12);
    AddU16(section, named);
    AddU16(section, count - named);
    for (unsigned i = 0; i < count; i++) {
        AddU32(section, name);
        AddU32(section, offset);
    }
}

Bytes MakeWorstPe(int type, unsigned count, const Bytes &data)
{
    const unsigned below = std::min(count, MOST_ENTRIES), times = (count + below - 1) / below;
    const uint32_t names = 16 + times * 8, languages = names + 16 + below * 8,
                   dataEntry = languages + 24, string = dataEntry + 16, start = string + 522;
    Bytes section;
    AddDirectory(section, times, (uint32_t)type, isBelow | names);
    AddDirectory(section, below, isBelow | string, isBelow | languages);
    AddDirectory(section, 1, 0, dataEntry);
    section.resize(string);
    AddU16(section, 260);
    for (int i = 0; i < 260; i++)
        AddU16(section, 1);
    AddBytes(section, data);
    BuiltExecutable built = BuildPe({.resources = {{10, 1, section}}});
    // The section begins where the data of that resource lie.
    const uint32_t place = (uint32_t)built.resources[0].data;
    PutU32(built.bytes, built.sectionHeader + 20, place);
    PutU32(built.bytes, place + dataEntry, built.address + start);
    PutU32(built.bytes, place + dataEntry + 4, (uint32_t)data.size());
    return built.bytes;
}

Bytes MakeWorstNe(unsigned count)
{
    ExecutableDescription description;
    description.resources.assign(count, {10, 1, {}});
    description.alignmentShift = 0;
    BuiltExecutable built = BuildNe(description);
    // A name can only lie in the table's first 64 KiB: its length in a record that nobody reads
    // there, its letters in those that follow.
    const size_t length = built.resources[21].entry + 10;
    for (const ResourcePlaces &places : built.resources) {
        std::fill_n(built.bytes.begin() + (ptrdiff_t)places.entry, 12, (unsigned char)1);
        PutU16(built.bytes, places.entry + 6, (unsigned)(length - built.table));
        built.bytes[places.entry + 10] = 255;
    }
    return built.bytes;
}

Bytes MakeWorstStrings(size_t size)
{
    Bytes block;
    while (block.size() + 4 <= size) {
        AddU16(block, 1);
        AddU16(block, '\n');
    }
    return block;
}
