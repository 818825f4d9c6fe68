#include "exe/ne_reader.h"

#include "content/block.h"
#include "exe/catalog.h"
#include "exe/categories.h"
#include "exe/ne_table.h"
#include "exe/refusal.h"
#include "exe/tree_items.h"
#include "platform/files.h"

#include <cstdint>

// One reading of a resource table.
struct NeReading {
    HWND tree;
    HTREEITEM categoryItem; // of the type that is walked; NULL when it is of no kept kind
    unsigned long long keptBytesLeft;
};

static void ReadName(const NeTableWalk *walk, WORD id, char name[ENTRY_NAME_LENGTH + 1])
{
    if (id & NE_INTEGER_ID)
        snprintf(name, ENTRY_NAME_LENGTH + 1, "%u", id & ~NE_INTEGER_ID);
    else
        ReadNeName(walk, id, name);
}

// Reads a resource's data and catalogues it. Returns false when the reading is over.
static bool KeepData(NeTableWalk *walk, ResourceEntry *entry)
{
    NeReading *reading = (NeReading *)walk->taker;
    FILE *file = walk->pages->file;
    if (entry->size > reading->keptBytesLeft) {
        NoteFailure(FailureKeptBytes, KeptBytesLimit(walk->pages->length));
        return false;
    }
    reading->keptBytesLeft -= entry->size;
    BYTE *bytes = (BYTE *)AllocateLocked(entry->size, &entry->data);
    if (bytes == nullptr) {
        NoteFailure(FailureMemory);
        return false;
    }
    const bool whole =
        SeekTo(file, entry->fileOffset) && fread(bytes, 1, entry->size, file) == entry->size;
    ProbeWave(entry, bytes);
    GlobalUnlock(entry->data);
    if (!whole)
        NoteFailure(FailureUnreadable);
    const bool isMeant = whole && entry->name[0] != 0;
    const bool isKept = isMeant && AddEntry(reading->tree, reading->categoryItem, entry);
    if (!isKept)
        GlobalFree(entry->data);
    // A record that cannot be appended is left out, and the reading goes on.
    if (isMeant && !isKept)
        NoteFailure(FailureMemory);
    return whole;
}

static bool TakeResource(NeTableWalk *walk, WORD type, const NeRecord *record)
{
    if (!(type & NE_INTEGER_ID))
        return true;
    ResourceEntry entry = {};
    entry.category = type & ~NE_INTEGER_ID;
    entry.fileOffset = (DWORD)record->offset << walk->shift;
    entry.size = (DWORD)record->length << walk->shift;
    // Of what has no length nothing is read, wherever it points.
    if (entry.size > 0 && !LiesInFile(walk->pages, entry.fileOffset, entry.size)) {
        NoteFailure(FailureData, entry.fileOffset);
        return false;
    }
    if (((const NeReading *)walk->taker)->categoryItem == nullptr)
        return true; // of no kept kind: it is enough that the data are there
    ReadName(walk, record->id, entry.name);
    return KeepData(walk, &entry);
}

static bool TakeType(NeTableWalk *walk, WORD type)
{
    NeReading *reading = (NeReading *)walk->taker;
    const DWORD number = type & ~NE_INTEGER_ID;
    char name[ENTRY_NAME_LENGTH + 1];
    reading->categoryItem = nullptr;
    if ((type & NE_INTEGER_ID) && CategoryLabel(number) != nullptr) {
        reading->categoryItem = AddCategoryItem(reading->tree, number);
        if (reading->categoryItem == nullptr) {
            NoteFailure(FailureMemory);
            return false;
        }
    } else if (type & NE_INTEGER_ID) {
        NoteOtherType(number);
    } else {
        ReadName(walk, type, name);
        NoteOtherTypeName(name);
    }
    return true;
}

int ReadNeResources(HWND tree, FILE *file, DWORD headerOffset)
{
    FilePages pages;
    OpenPages(&pages, file);
    NeReading reading = {};
    reading.tree = tree;
    reading.keptBytesLeft = KeptBytesLimit(pages.length);
    NeTableWalk walk = {};
    walk.pages = &pages;
    walk.takeType = TakeType;
    walk.takeResource = TakeResource;
    walk.taker = &reading;
    return WalkNeTable(&walk, headerOffset);
}
