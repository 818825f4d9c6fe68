#include "exe/ne_table.h"

#include "exe/refusal.h"
#include "platform/byte_reader.h"

#include <algorithm>

#define TABLE_FIELD 36 // of the header: where the table begins, counted from the header
#define TYPE_RECORD_SIZE 8
#define NAME_RECORD_SIZE 12

// Reads a record from the file. Returns false, with the failure noted, when it is not all there.
static bool ReadRecord(FilePages *pages, uint64_t offset, BYTE *record, size_t size)
{
    if (ReadPages(pages, offset, record, size))
        return true;
    NoteFailure(FailureTable, offset);
    return false;
}

// Reads a field of 16 bits from the file, as ReadRecord does.
static bool ReadField(FilePages *pages, uint64_t offset, WORD *field)
{
    BYTE bytes[sizeof *field];
    if (!ReadRecord(pages, offset, bytes, sizeof bytes))
        return false;
    ByteReader reader = OpenBytes(bytes, sizeof bytes);
    *field = ReadU16(&reader, 0);
    return true;
}

size_t ReadNeName(const NeTableWalk *walk, WORD id, char name[NE_NAME_LENGTH + 1])
{
    BYTE length = 0;
    const uint64_t place = walk->start + id;
    size_t count = 0;
    if (ReadPages(walk->pages, place, &length, 1))
        count = (size_t)std::min<uint64_t>(length, walk->pages->length - place - 1);
    if (!ReadPages(walk->pages, place + 1, name, count))
        count = 0;
    name[count] = 0;
    return count;
}

// Walks one type and its resources. *position is moved behind them. Returns false when the walk is
// over, and then *result is its outcome.
static bool WalkType(NeTableWalk *walk, uint64_t *position, bool *result)
{
    BYTE typeRecord[TYPE_RECORD_SIZE];
    *result = false;
    if (!ReadRecord(walk->pages, *position, typeRecord, sizeof typeRecord))
        return false;
    *position += sizeof typeRecord;
    ByteReader reader = OpenBytes(typeRecord, sizeof typeRecord);
    const WORD type = ReadU16(&reader, 0);
    const int count = ReadU16(&reader, 2);
    if (type == 0) {
        *result = true;
        return false;
    }
    if (!walk->takeType(walk, type))
        return false;
    for (int i = 0; i < count; i++) {
        BYTE bytes[NAME_RECORD_SIZE];
        if (!ReadRecord(walk->pages, *position, bytes, sizeof bytes))
            return false;
        *position += sizeof bytes;
        reader = OpenBytes(bytes, sizeof bytes);
        NeRecord record;
        record.offset = TakeU16(&reader);
        record.length = TakeU16(&reader);
        record.flags = TakeU16(&reader);
        record.id = TakeU16(&reader);
        if (!walk->takeResource(walk, type, &record))
            return false;
    }
    return true;
}

bool WalkNeTable(NeTableWalk *walk, DWORD headerOffset)
{
    WORD field;
    if (!ReadField(walk->pages, (uint64_t)headerOffset + TABLE_FIELD, &field))
        return false;
    walk->start = (uint64_t)headerOffset + field;
    if (!ReadField(walk->pages, walk->start, &field))
        return false;
    walk->shift = field & 31;
    uint64_t position = walk->start + sizeof field;
    bool result;
    while (WalkType(walk, &position, &result)) {
    }
    return result;
}
