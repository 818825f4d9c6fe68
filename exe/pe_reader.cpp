#include "exe/pe_reader.h"

#include "content/block.h"
#include "content/string_block.h"
#include "exe/catalog.h"
#include "exe/categories.h"
#include "exe/pe_directories.h"
#include "exe/pe_headers.h"
#include "exe/refusal.h"
#include "exe/tree_items.h"
#include "platform/byte_reader.h"
#include "platform/files.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#define DIRECTORY_ENTRY_SIZE 8

// One reading's walk over the directories.
struct PeReading {
    ByteReader image; // never failed itself: each record is read through a copy
    DWORD delta;      // turns a relative virtual address into a file offset
    HWND tree;
    HTREEITEM categoryItem; // of the category that is walked; NULL: of none
    DWORD currentType;      // that category
    unsigned long long keptBytesLeft;
};

static bool ReadImage(void *source, uint64_t offset, void *bytes, size_t size)
{
    ByteReader reader = ((const PeReading *)source)->image;
    const BYTE *from = offset <= reader.total ? BytesAt(&reader, (size_t)offset, size) : nullptr;
    if (from == nullptr)
        return false;
    memcpy(bytes, from, size);
    return true;
}

// Returns false when the name string does not lie in the image.
static bool GetResourceEntryName(PeDirectoryWalk *walk, DWORD nameField,
                                 char name[ENTRY_NAME_LENGTH + 1])
{
    if (!(nameField & PE_HIGH_BIT)) {
        snprintf(name, ENTRY_NAME_LENGTH + 1, "%lu", (unsigned long)nameField);
        return true;
    }
    ByteReader reader = ((const PeReading *)walk->taker)->image;
    const size_t offset = (size_t)walk->root + (nameField & ~PE_HIGH_BIT);
    const WORD count = ReadU16(&reader, offset);
    const BYTE *units = BytesAt(&reader, offset + 2, (size_t)count * 2);
    if (units == nullptr) {
        FailPeWalk(walk, FailureName, offset);
        return false;
    }
    UnitsToText(units, std::min<int>(count, ENTRY_NAME_LENGTH), name);
    return true;
}

// Catalogues the resource whose data entry lies at an offset of the image.
static void CatalogueResource(PeDirectoryWalk *walk, DWORD nameField, size_t dataEntry)
{
    PeReading *reading = (PeReading *)walk->taker;
    ResourceEntry entry = {};
    if (!GetResourceEntryName(walk, nameField, entry.name))
        return;
    ByteReader reader = reading->image;
    entry.category = reading->currentType;
    entry.fileOffset = ReadU32(&reader, dataEntry) + reading->delta;
    entry.size = ReadU32(&reader, dataEntry + 4);
    if (BytesAt(&reader, dataEntry, PE_DATA_ENTRY_SIZE) == nullptr) {
        FailPeWalk(walk, FailureDataEntry, dataEntry);
        return;
    }
    // Of what has no length nothing is read, wherever it points.
    const BYTE *bytes = BytesAt(&reader, entry.size == 0 ? 0 : entry.fileOffset, entry.size);
    if (bytes == nullptr) {
        FailPeWalk(walk, FailureData, entry.fileOffset);
        return;
    }
    if (entry.name[0] == 0)
        return;
    if (entry.size > reading->keptBytesLeft) {
        StopPeWalk(walk, FailureKeptBytes, KeptBytesLimit(reading->image.total));
        return;
    }
    reading->keptBytesLeft -= entry.size;
    if (!KeepResource(reading->tree, reading->categoryItem, &entry, bytes))
        FailPeWalk(walk, FailureMemory);
}

// Makes an integer type the current one; one of no kept kind leaves none.
static void SelectType(PeDirectoryWalk *walk, DWORD type)
{
    PeReading *reading = (PeReading *)walk->taker;
    reading->categoryItem = nullptr;
    if (CategoryLabel(type) == nullptr) {
        NoteOtherType(type);
        return;
    }
    reading->currentType = type;
    reading->categoryItem = AddCategoryItem(reading->tree, type);
    if (reading->categoryItem == nullptr)
        FailPeWalk(walk, FailureMemory);
}

// Takes a directory: an integer type becomes the current one, any other is one resource when a kept
// type is walked.
static void TakeDirectory(PeDirectoryWalk *walk, const PeDirectory *directory)
{
    PeReading *reading = (PeReading *)walk->taker;
    char name[ENTRY_NAME_LENGTH + 1];
    if (directory->level == 1 && !(directory->nameField & PE_HIGH_BIT)) {
        SelectType(walk, directory->nameField);
        return;
    }
    if (reading->categoryItem == nullptr) {
        if (directory->level == 1 && GetResourceEntryName(walk, directory->nameField, name))
            NoteOtherTypeName(name);
        return;
    }
    BYTE firstEntry[DIRECTORY_ENTRY_SIZE];
    if (directory->entryCount == 0 ||
        !ReadImage(reading, directory->offset + PE_DIRECTORY_SIZE, firstEntry, sizeof firstEntry))
        return; // an entry that is not there is told by the walk
    ByteReader reader = OpenBytes(firstEntry, sizeof firstEntry);
    const DWORD offset = ReadU32(&reader, 4);
    CatalogueResource(walk, directory->nameField, (size_t)walk->root + (offset & ~PE_HIGH_BIT));
}

// Notes why an image has no section named .rsrc.
static void NoteNoSection(ByteReader image, size_t headers)
{
    PeSection section;
    if (Is64BitImage(image, headers))
        NoteFailure(Failure64Bit);
    else
        NoteMissingSection(FindResourceSection(image, headers, &section) ? section.name : nullptr);
}

static bool WalkImage(HWND tree, const BYTE *bytes, size_t size)
{
    PeReading reading = {};
    reading.image = OpenBytes(bytes, size);
    reading.tree = tree;
    reading.keptBytesLeft = KeptBytesLimit(size);

    size_t headers;
    PeSection section;
    if (!FindPeHeaders(reading.image, &headers)) {
        NoteFailure(FailureHeaders, headers);
        return false;
    }
    if (!FindSection(reading.image, headers, ".rsrc", &section)) {
        NoteNoSection(reading.image, headers);
        return false;
    }
    reading.delta = section.fileOffset - section.address;
    PeDirectoryWalk walk = {};
    walk.read = ReadImage;
    walk.source = &reading;
    walk.root = section.fileOffset;
    walk.takeDirectory = TakeDirectory;
    walk.taker = &reading;
    return WalkPeDirectories(&walk, size);
}

int ReadPeResources(HWND tree, FILE *file)
{
    const int64_t length = FileLength(file);
    if (length <= 0) {
        NoteFailure(FailureUnreadable);
        return 0;
    }
    const size_t size = (size_t)length;
    HGLOBAL block;
    BYTE *bytes = (BYTE *)AllocateLocked(size, &block);
    if (bytes == nullptr) {
        NoteFailure(FailureMemory);
        return 0;
    }
    bool result = false;
    if (!ReadOverZeroes(file, bytes, size))
        NoteFailure(FailureUnreadable);
    else
        result = WalkImage(tree, bytes, size);
    GlobalUnlock(block);
    GlobalFree(block);
    return result;
}
