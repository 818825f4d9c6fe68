// The resource catalogue: one record for each resource that is kept of the open file, each with
// its own copy of the resource's bytes. The readers fill it, everything else reads it by index.
#pragma once

#include "exe/categories.h"

#define ENTRY_NAME_LENGTH 260
#define WAVE_HEADER_SIZE 12 // "RIFF", the size of what follows these 8 bytes, "WAVE"

// One kept resource. A plain record, copied by value; copies share the data block.
struct ResourceEntry {
    DWORD category;                   // a ResourceCategory
    DWORD fileOffset;                 // where its bytes begin in the file
    DWORD size;                       // bytes; what the data block holds is told by this alone
    HGLOBAL data;                     // movable block, the catalogue's once it is appended
    char name[ENTRY_NAME_LENGTH + 1]; // ANSI code page: the id in decimal, or the name; not empty
    LONG isWave;                      // 1 when the data begins with a RIFF WAVE header
};

// There is no entries block exactly when count is 0. An index stays valid until the catalogue is
// released: records are only ever appended.
struct ResourceCatalog {
    HGLOBAL entries; // movable block of count ResourceEntry records
    LONG count;
};

// The catalogue of the open file.
extern ResourceCatalog openCatalog;

// How many bytes the kept resources of a file of fileLength bytes may have together: a file that
// names the same data over and over must not fill the memory.
unsigned long long KeptBytesLimit(unsigned long long fileLength);

// Adds a copy of the entry as the last record; its index is the old count. On success the
// catalogue owns the entry's data block. Returns 0 on failure: the catalogue is as it was and the
// data block is still the caller's.
int AppendEntry(ResourceCatalog *catalog, const ResourceEntry *entry);

// Copies the record at index, which must lie below the catalogue's count. Returns 0 when the block
// cannot be locked, which is always so for an empty catalogue.
int GetEntry(HGLOBAL entries, ResourceEntry *entry, LONG index);

// Releases every data block and the records. A sound that plays from one must be stopped first.
void ReleaseCatalog(ResourceCatalog *catalog);

// Sets and returns entry->isWave (RIFF WAVE, Microsoft and IBM's multimedia format): whether data,
// of entry->size bytes, begins with "RIFF", any four bytes and "WAVE", letters compared without
// case. Fewer than WAVE_HEADER_SIZE bytes are not WAVE.
LONG ProbeWave(ResourceEntry *entry, const BYTE *data);
