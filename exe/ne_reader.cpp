#include "exe/ne_reader.h"

#include "content/block.h"
#include "exe/catalog.h"
#include "exe/categories.h"
#include "exe/refusal.h"
#include "exe/tree_items.h"
#include "platform/byte_reader.h"
#include "platform/files.h"

#include <cstdint>
#include <cstring>

#define TYPE_RECORD_SIZE 8
#define NAME_RECORD_SIZE 12
#define INTEGER_ID 0x8000
#define WINDOW_SIZE 4096

// One reading of a resource table.
struct NeTable {
    FILE *file;
    uint64_t fileLength;
    uint64_t start;    // of the resource table
    uint64_t position; // of the next record
    int shift;         // alignment units to bytes
    HWND tree;
    unsigned long long keptBytesLeft;

    // What was read last of the table: records follow one another.
    BYTE window[WINDOW_SIZE];
    uint64_t windowStart;
    size_t windowLength;
};

// Reads a record from the file. Returns 0, with the failure noted, when it is not all there.
static int ReadRecord(NeTable *table, uint64_t offset, BYTE *record, size_t size)
{
    if (offset < table->windowStart || offset - table->windowStart > table->windowLength ||
        table->windowLength - (size_t)(offset - table->windowStart) < size) {
        table->windowStart = offset;
        table->windowLength = 0;
        if (offset < table->fileLength && SeekTo(table->file, offset))
            table->windowLength = fread(table->window, 1, WINDOW_SIZE, table->file);
    }
    const size_t at = (size_t)(offset - table->windowStart);
    if (table->windowLength - at < size) {
        NoteFailure(FailureTable, offset);
        return 0;
    }
    memcpy(record, table->window + at, size);
    return 1;
}

// Reads a field of 16 bits from the file, as ReadRecord does.
static int ReadField(NeTable *table, uint64_t offset, WORD *field)
{
    BYTE bytes[sizeof *field];
    if (!ReadRecord(table, offset, bytes, sizeof bytes))
        return 0;
    ByteReader reader = OpenBytes(bytes, sizeof bytes);
    *field = ReadU16(&reader, 0);
    return 1;
}

// A name string that runs past the end of the file stops there.
static void ReadName(NeTable *table, WORD id, char name[ENTRY_NAME_LENGTH + 1])
{
    if (id & INTEGER_ID) {
        snprintf(name, ENTRY_NAME_LENGTH + 1, "%u", id & ~INTEGER_ID);
        return;
    }
    BYTE length = 0;
    name[0] = 0;
    if (!SeekTo(table->file, table->start + id) || fread(&length, 1, 1, table->file) != 1)
        return;
    name[fread(name, 1, length, table->file)] = 0;
}

// Reads a resource's data and catalogues it. Returns 0 when the reading is over.
static int KeepData(NeTable *table, ResourceEntry *entry, HTREEITEM categoryItem)
{
    if (entry->size > table->keptBytesLeft) {
        NoteFailure(FailureKeptBytes, entry->fileOffset);
        return 0;
    }
    table->keptBytesLeft -= entry->size;
    BYTE *bytes = (BYTE *)AllocateLocked(entry->size, &entry->data);
    if (bytes == nullptr) {
        NoteFailure(FailureMemory, entry->fileOffset);
        return 0;
    }
    const int whole = SeekTo(table->file, entry->fileOffset) &&
                      fread(bytes, 1, entry->size, table->file) == entry->size;
    ProbeWave(entry, bytes);
    GlobalUnlock(entry->data);
    if (!whole)
        NoteFailure(FailureUnreadable, entry->fileOffset);
    // A record that cannot be appended is left out, and the reading goes on.
    if (!whole || entry->name[0] == 0 || !AddEntry(table->tree, categoryItem, entry))
        GlobalFree(entry->data);
    return whole;
}

// Takes one resource record. Returns 0 when the reading is over.
static int TakeResource(NeTable *table, WORD type, HTREEITEM categoryItem)
{
    BYTE record[NAME_RECORD_SIZE];
    if (!ReadRecord(table, table->position, record, sizeof record))
        return 0;
    table->position += sizeof record;
    if (!(type & INTEGER_ID))
        return 1;
    ByteReader reader = OpenBytes(record, sizeof record);
    ResourceEntry entry = {};
    entry.category = type & ~INTEGER_ID;
    entry.fileOffset = (DWORD)ReadU16(&reader, 0) << table->shift;
    entry.size = (DWORD)ReadU16(&reader, 2) << table->shift;
    // Of what has no length nothing is read, wherever it points.
    if (entry.size > 0 && (entry.fileOffset > table->fileLength ||
                           entry.size > table->fileLength - entry.fileOffset)) {
        NoteFailure(FailureData, entry.fileOffset);
        return 0;
    }
    if (categoryItem == nullptr)
        return 1; // of no kept kind: it is enough that the data are there
    ReadName(table, ReadU16(&reader, 6), entry.name);
    return KeepData(table, &entry, categoryItem);
}

static void NoteType(NeTable *table, WORD type)
{
    char name[ENTRY_NAME_LENGTH + 1];
    if (type & INTEGER_ID) {
        NoteOtherType(type & ~INTEGER_ID);
        return;
    }
    ReadName(table, type, name);
    NoteOtherTypeName(name);
}

// Takes the type record at the table's position and its resources. Returns 0 when the reading is
// over, and then *result is its outcome.
static int TakeType(NeTable *table, int *result)
{
    BYTE record[TYPE_RECORD_SIZE];
    *result = 0;
    if (!ReadRecord(table, table->position, record, sizeof record))
        return 0;
    table->position += sizeof record;
    ByteReader reader = OpenBytes(record, sizeof record);
    const WORD type = ReadU16(&reader, 0);
    const int count = ReadU16(&reader, 2);
    if (type == 0) {
        *result = 1;
        return 0;
    }
    HTREEITEM categoryItem = nullptr;
    if ((type & INTEGER_ID) && CategoryLabel(type & ~INTEGER_ID) != nullptr)
        categoryItem = AddCategoryItem(table->tree, type & ~INTEGER_ID);
    else
        NoteType(table, type);
    for (int i = 0; i < count; i++)
        if (!TakeResource(table, type, categoryItem))
            return 0;
    return 1;
}

int ReadNeResources(HWND tree, FILE *file, DWORD headerOffset)
{
    NeTable table = {};
    const int64_t length = FileLength(file);
    table.file = file;
    table.fileLength = length < 0 ? 0 : (uint64_t)length;
    table.tree = tree;
    table.keptBytesLeft = KeptBytesLimit(table.fileLength);

    WORD field;
    if (!ReadField(&table, (uint64_t)headerOffset + 36, &field))
        return 0;
    table.start = (uint64_t)headerOffset + field;
    if (!ReadField(&table, table.start, &field))
        return 0;
    table.shift = field & 31;
    table.position = table.start + sizeof field;
    int result;
    while (TakeType(&table, &result)) {
    }
    return result;
}
