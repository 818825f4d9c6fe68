#include "content/picture_group.h"

#include "platform/byte_reader.h"

#define HEADER_SIZE 6 // reserved, kind and count
#define COUNT_OFFSET 4

static GroupEntry TakeEntry(ByteReader *reader, bool isCursor)
{
    GroupEntry entry = {};
    const WORD first = TakeU16(reader), second = TakeU16(reader);
    if (isCursor) {
        entry.width = first;
        entry.height = second;
    } else {
        entry.width = (BYTE)first;
        entry.height = (BYTE)(first >> 8);
        entry.colorCount = (BYTE)second;
        entry.reserved = (BYTE)(second >> 8);
    }
    entry.planes = TakeU16(reader);
    entry.bitCount = TakeU16(reader);
    entry.size = TakeU32(reader);
    entry.number = TakeU16(reader);
    return entry;
}

bool ReadGroupEntries(const BYTE *data, size_t size, bool isCursor,
                      std::vector<GroupEntry> *entries, size_t *count)
{
    ByteReader reader = OpenBytes(data, size);
    entries->clear();
    *count = ReadU16(&reader, COUNT_OFFSET);
    SkipBytes(&reader, HEADER_SIZE);
    if (reader.failed)
        return false;
    for (size_t i = 0; i < *count; i++) {
        const GroupEntry entry = TakeEntry(&reader, isCursor);
        if (reader.failed)
            break;
        entries->push_back(entry);
    }
    return true;
}
