// The directories of a PE file's resources (Microsoft's PE format, "The .rsrc Section"): the root
// names types, a type's directory names, a name's directory languages, whose entries lead to data
// entries. One walk follows them, in stored order, and hands on what it meets.
//
// Honest files share directories, so the walk keeps no set of visited places; it is bounded by the
// depth, and by the number of directories and of their entries in proportion to the file.
#pragma once

#include "exe/refusal.h"

#include <cstdint>

#define PE_DIRECTORY_SIZE 16
#define PE_DATA_ENTRY_SIZE 16 // address, size, code page and a reserved field, 32 bits each
#define PE_HIGH_BIT 0x80000000u

// A directory that is walked.
struct PeDirectory {
    uint64_t offset; // in the file
    int level;       // 0 the root, 1 a type's, 2 a name's; more in odd files
    DWORD nameField; // of the entry that led here (0 for the root): a number, or with PE_HIGH_BIT
                     // the place of a name string, counted from the root
    int entryCount;  // 8 bytes each, right behind the directory
};

struct PeDirectoryWalk {
    // Copies bytes of the file; returns false when they do not all lie in it.
    bool (*read)(void *source, uint64_t offset, void *bytes, size_t size);
    void *source;
    uint64_t root; // file offset of the root directory

    // Called for each entry of a directory at a level; false: what it leads to is passed over,
    // unread. NULL: all is wanted.
    bool (*isWanted)(const PeDirectoryWalk *walk, int level, DWORD nameField);

    // Called for each directory before its entries are looked at. It may fail or stop the walk.
    void (*takeDirectory)(PeDirectoryWalk *walk, const PeDirectory *directory);

    // Called for each entry that leads to a data entry, whose file offset is given and which need
    // not lie in the file; nameField is the entry's own. NULL: such entries are passed over.
    void (*takeData)(PeDirectoryWalk *walk, const PeDirectory *directory, DWORD nameField,
                     uint64_t dataEntry);
    void *taker; // the caller's, for these two

    bool failed;  // once anything did not lie in the file or a bound was met
    bool stopped; // once the walk is over before its end

    // The walk's own.
    uint64_t fileLength;
    uint64_t directoriesLeft;
    uint64_t entriesLeft;
};

// Walks all directories of a file of a length in bytes. What cannot be read is left out, with the
// reason noted, and the walk goes on unless it was stopped. Returns true, or false when
// walk->failed.
bool WalkPeDirectories(PeDirectoryWalk *walk, uint64_t fileLength);

// Note a failure of the walk, which goes on or is over. offset is as for NoteFailure.
void FailPeWalk(PeDirectoryWalk *walk, FailureKind kind, uint64_t offset = 0);
void StopPeWalk(PeDirectoryWalk *walk, FailureKind kind, uint64_t offset = 0);
