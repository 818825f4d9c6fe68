#include "exe/pe_directories.h"

#include "platform/byte_reader.h"

#include <algorithm>

#define DIRECTORY_ENTRY_SIZE 8
#define DEEPEST_LEVEL 8

// How many directories, and entries in them, are followed, each as often as it is named.
static uint64_t MostDirectories(uint64_t fileLength)
{
    return std::max<uint64_t>(10000, fileLength / 8);
}

static uint64_t MostEntries(uint64_t fileLength)
{
    return std::max<uint64_t>(1000000, fileLength / 4);
}

void FailPeWalk(PeDirectoryWalk *walk, FailureKind kind, uint64_t offset)
{
    walk->failed = true;
    NoteFailure(kind, offset);
}

void StopPeWalk(PeDirectoryWalk *walk, FailureKind kind, uint64_t offset)
{
    FailPeWalk(walk, kind, offset);
    walk->stopped = true;
}

// Reads a directory's count of entries and takes them from what may still be walked. Returns false
// when the directory is not entered.
static bool EnterDirectory(PeDirectoryWalk *walk, PeDirectory *directory)
{
    BYTE record[PE_DIRECTORY_SIZE];
    if (!walk->read(walk->source, directory->offset, record, sizeof record)) {
        FailPeWalk(walk, FailureDirectory, directory->offset);
        return false;
    }
    if (directory->level > DEEPEST_LEVEL) {
        FailPeWalk(walk, FailureDepth, directory->offset);
        return false;
    }
    ByteReader reader = OpenBytes(record, sizeof record);
    directory->entryCount = ReadU16(&reader, 12) + ReadU16(&reader, 14);
    if (walk->directoriesLeft == 0) {
        StopPeWalk(walk, FailureDirectoryCount, MostDirectories(walk->fileLength));
        return false;
    }
    if (walk->entriesLeft < (uint64_t)directory->entryCount) {
        StopPeWalk(walk, FailureEntryCount, MostEntries(walk->fileLength));
        return false;
    }
    walk->directoriesLeft--;
    walk->entriesLeft -= (uint64_t)directory->entryCount;
    return true;
}

static void WalkDirectory(PeDirectoryWalk *walk, PeDirectory directory)
{
    if (!EnterDirectory(walk, &directory))
        return;
    walk->takeDirectory(walk, &directory);
    for (int i = 0; i < directory.entryCount && !walk->stopped; i++) {
        const uint64_t at =
            directory.offset + PE_DIRECTORY_SIZE + (uint64_t)i * DIRECTORY_ENTRY_SIZE;
        BYTE record[DIRECTORY_ENTRY_SIZE];
        if (!walk->read(walk->source, at, record, sizeof record)) {
            FailPeWalk(walk, FailureDirectoryEntry, at);
            return;
        }
        ByteReader reader = OpenBytes(record, sizeof record);
        const DWORD nameField = TakeU32(&reader);
        const DWORD target = TakeU32(&reader);
        const uint64_t place = walk->root + (target & ~PE_HIGH_BIT);
        if (walk->isWanted != nullptr && !walk->isWanted(walk, directory.level, nameField))
            continue;
        if (target & PE_HIGH_BIT)
            WalkDirectory(walk, {place, directory.level + 1, nameField, 0});
        else if (walk->takeData != nullptr)
            walk->takeData(walk, &directory, nameField, place);
    }
}

bool WalkPeDirectories(PeDirectoryWalk *walk, uint64_t fileLength)
{
    walk->fileLength = fileLength;
    walk->directoriesLeft = MostDirectories(fileLength);
    walk->entriesLeft = MostEntries(fileLength);
    walk->failed = false;
    walk->stopped = false;
    WalkDirectory(walk, {walk->root, 0, 0, 0});
    return !walk->failed;
}
