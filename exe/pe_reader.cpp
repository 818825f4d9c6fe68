#include "exe/pe_reader.h"

#include "content/block.h"
#include "content/string_block.h"
#include "exe/catalog.h"
#include "exe/categories.h"
#include "exe/pe_headers.h"
#include "exe/refusal.h"
#include "exe/tree_items.h"
#include "platform/byte_reader.h"
#include "platform/files.h"

#include <algorithm>
#include <cstdint>

#define DIRECTORY_SIZE 16
#define DIRECTORY_ENTRY_SIZE 8
#define DATA_ENTRY_SIZE 16
#define DEEPEST_LEVEL 8 // the root is level 0
#define HIGH_BIT 0x80000000u
#define NO_TYPE (-1)

// One reading's walk over the directories.
struct PeWalk {
    ByteReader image; // never failed itself: each record is read through a copy
    int result;       // 0 once anything could not be catalogued
    DWORD delta;      // turns a relative virtual address into a file offset
    LONG currentType; // the category that is walked, or NO_TYPE
    HWND tree;
    HTREEITEM categoryItem;
    size_t sectionStart;

    // Directories may be shared by many parents, so these bound the walk, not a set of places.
    size_t directoriesLeft;
    size_t entriesLeft;
    unsigned long long keptBytesLeft;
    int stopped;
};

static void Fail(PeWalk *walk, FailureKind kind, size_t offset)
{
    walk->result = 0;
    NoteFailure(kind, offset);
}

static void Stop(PeWalk *walk, FailureKind kind, size_t offset)
{
    Fail(walk, kind, offset);
    walk->stopped = 1;
}

// Returns 0 when the name string does not lie in the image.
static int GetResourceEntryName(PeWalk *walk, DWORD nameField, char name[ENTRY_NAME_LENGTH + 1])
{
    if (!(nameField & HIGH_BIT)) {
        snprintf(name, ENTRY_NAME_LENGTH + 1, "%lu", (unsigned long)nameField);
        return 1;
    }
    ByteReader reader = walk->image;
    const size_t offset = walk->sectionStart + (nameField & ~HIGH_BIT);
    const WORD count = ReadU16(&reader, offset);
    const BYTE *units = BytesAt(&reader, offset + 2, (size_t)count * 2);
    if (units == nullptr) {
        Fail(walk, FailureName, offset);
        return 0;
    }
    UnitsToText(units, std::min<int>(count, ENTRY_NAME_LENGTH), name);
    return 1;
}

// Catalogues the resource whose data entry lies at an offset of the image.
static void CatalogueResource(PeWalk *walk, DWORD nameField, size_t dataEntry)
{
    ResourceEntry entry = {};
    if (!GetResourceEntryName(walk, nameField, entry.name))
        return;
    ByteReader reader = walk->image;
    entry.category = (DWORD)walk->currentType;
    entry.fileOffset = ReadU32(&reader, dataEntry) + walk->delta;
    entry.size = ReadU32(&reader, dataEntry + 4);
    if (BytesAt(&reader, dataEntry, DATA_ENTRY_SIZE) == nullptr) {
        Fail(walk, FailureDataEntry, dataEntry);
        return;
    }
    // Of what has no length nothing is read, wherever it points.
    const BYTE *bytes = BytesAt(&reader, entry.size == 0 ? 0 : entry.fileOffset, entry.size);
    if (bytes == nullptr) {
        Fail(walk, FailureData, entry.fileOffset);
        return;
    }
    if (entry.name[0] == 0)
        return;
    if (entry.size > walk->keptBytesLeft) {
        Stop(walk, FailureKeptBytes, entry.fileOffset);
        return;
    }
    walk->keptBytesLeft -= entry.size;
    if (!KeepResource(walk->tree, walk->categoryItem, &entry, bytes))
        Fail(walk, FailureMemory, entry.fileOffset);
}

// Makes an integer type the current one, or clears it when it is of no kept kind.
static void SelectType(PeWalk *walk, DWORD type)
{
    walk->currentType = NO_TYPE;
    walk->categoryItem = nullptr;
    if (CategoryLabel(type) == nullptr) {
        NoteOtherType(type);
        return;
    }
    walk->currentType = (LONG)type;
    walk->categoryItem = AddCategoryItem(walk->tree, type);
}

// Takes a directory that is none of an integer type: one resource when a kept type is walked.
static void TakeDirectory(PeWalk *walk, size_t directory, int entryCount, int level,
                          DWORD nameField)
{
    char name[ENTRY_NAME_LENGTH + 1];
    if (walk->categoryItem == nullptr || walk->currentType == NO_TYPE) {
        if (level == 1 && GetResourceEntryName(walk, nameField, name))
            NoteOtherTypeName(name);
        return;
    }
    if (entryCount == 0)
        return;
    ByteReader reader = walk->image;
    const size_t firstEntry = directory + DIRECTORY_SIZE;
    const DWORD offset = ReadU32(&reader, firstEntry + 4);
    if (reader.failed)
        return; // told by the walk over the entries
    CatalogueResource(walk, nameField, walk->sectionStart + (offset & ~HIGH_BIT));
}

static void WalkResourceDirectory(PeWalk *walk, size_t directory, int level, DWORD nameField)
{
    ByteReader reader = walk->image;
    const int entryCount = ReadU16(&reader, directory + 12) + ReadU16(&reader, directory + 14);
    if (BytesAt(&reader, directory, DIRECTORY_SIZE) == nullptr) {
        Fail(walk, FailureDirectory, directory);
        return;
    }
    if (level > DEEPEST_LEVEL) {
        Fail(walk, FailureDepth, directory);
        return;
    }
    if (walk->directoriesLeft == 0 || walk->entriesLeft < (size_t)entryCount) {
        Stop(walk, FailureDirectoryCount, directory);
        return;
    }
    walk->directoriesLeft--;
    walk->entriesLeft -= (size_t)entryCount;

    if (level == 1 && !(nameField & HIGH_BIT))
        SelectType(walk, nameField);
    else
        TakeDirectory(walk, directory, entryCount, level, nameField);

    for (int i = 0; i < entryCount && !walk->stopped; i++) {
        const size_t at = directory + DIRECTORY_SIZE + (size_t)i * DIRECTORY_ENTRY_SIZE;
        const DWORD name = ReadU32(&reader, at);
        const DWORD offset = ReadU32(&reader, at + 4);
        if (reader.failed) {
            Fail(walk, FailureDirectoryEntry, at);
            return;
        }
        if (offset & HIGH_BIT)
            WalkResourceDirectory(walk, walk->sectionStart + (offset & ~HIGH_BIT), level + 1, name);
    }
}

// Notes why an image has no section named .rsrc.
static void NoteNoSection(ByteReader image, size_t headers)
{
    PeSection section;
    if (Is64BitImage(image, headers))
        NoteFailure(Failure64Bit, headers);
    else
        NoteMissingSection(FindResourceSection(image, headers, &section) ? section.name : nullptr);
}

static int WalkImage(HWND tree, const BYTE *bytes, size_t size)
{
    PeWalk walk = {};
    walk.image = OpenBytes(bytes, size);
    walk.result = 1;
    walk.currentType = NO_TYPE;
    walk.tree = tree;
    walk.directoriesLeft = std::max<size_t>(10000, size / 8);
    walk.entriesLeft = std::max<size_t>(1000000, size / 4);
    walk.keptBytesLeft = KeptBytesLimit(size);

    size_t headers;
    PeSection section;
    if (!FindPeHeaders(walk.image, &headers)) {
        NoteFailure(FailureHeaders, headers);
        return 0;
    }
    if (!FindSection(walk.image, headers, ".rsrc", &section)) {
        NoteNoSection(walk.image, headers);
        return 0;
    }
    walk.sectionStart = section.fileOffset;
    walk.delta = section.fileOffset - section.address;
    WalkResourceDirectory(&walk, walk.sectionStart, 0, 0);
    return walk.result;
}

int ReadPeResources(HWND tree, FILE *file)
{
    const int64_t length = FileLength(file);
    if (length <= 0) {
        NoteFailure(FailureUnreadable, 0);
        return 0;
    }
    const size_t size = (size_t)length;
    HGLOBAL block;
    BYTE *bytes = (BYTE *)AllocateLocked(size, &block);
    if (bytes == nullptr) {
        NoteFailure(FailureMemory, 0);
        return 0;
    }
    int result = 0;
    if (!ReadOverZeroes(file, bytes, size))
        NoteFailure(FailureUnreadable, 0);
    else
        result = WalkImage(tree, bytes, size);
    GlobalUnlock(block);
    GlobalFree(block);
    return result;
}
