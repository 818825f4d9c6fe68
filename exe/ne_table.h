// The resource table of a 16-bit file in the New Executable layout (Microsoft's NE format): type
// records, each followed by its resource records, up to a type of 0. One walk follows them, in
// stored order, and hands on what it meets.
#pragma once

#include "exe/file_pages.h"

#define NE_INTEGER_ID                                                                              \
    0x8000 // an id is a number below this bit, else the place of a name string,
           // counted from the table's start
#define NE_NAME_LENGTH 255

// A resource record: places and lengths are in alignment units.
struct NeRecord {
    WORD offset;
    WORD length;
    WORD flags; // 0x10 moveable, 0x20 pure, 0x40 preloaded, 0x1000 discardable
    WORD id;
};

struct NeTableWalk {
    FilePages *pages;
    uint64_t start; // of the resource table, in the file
    int shift;      // of alignment units, to bytes: 0 to 31

    // Called for each type record and for each of its resource records; the walk is over, and has
    // failed, when one returns false.
    bool (*takeType)(NeTableWalk *walk, WORD type);
    bool (*takeResource)(NeTableWalk *walk, WORD type, const NeRecord *record);
    void *taker; // the caller's, for these two
};

// Walks the resource table of the NE header at an offset of the file. Returns true when the end of
// the table was reached, else 0: a record that is cut short is noted (FailureTable).
bool WalkNeTable(NeTableWalk *walk, DWORD headerOffset);

// Reads a name string as it stands, terminated. One that runs past the end of the file stops there.
// Returns its length in bytes.
size_t ReadNeName(const NeTableWalk *walk, WORD id, char name[NE_NAME_LENGTH + 1]);
