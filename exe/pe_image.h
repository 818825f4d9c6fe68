// What the headers of a PE file tell of it, 32 or 64 bits, and where its sections lie in the file:
// read page by page, for the survey. The catalogue's reading by the 32-bit layout alone is
// exe/pe_headers.h.
#pragma once

#include "exe/file_pages.h"
#include "exe/pe_headers.h"

#include <vector>

struct PeImage {
    bool is64Bit;
    bool isLibrary;
    WORD machine;
    DWORD resources; // relative virtual address of the root directory; 0 when none is told

    // By address. The headers, which lie in memory as they do in the file, are the first of them.
    std::vector<PeSection> sections;
};

// Reads the headers at an offset of the file. Returns false when they and those of all sections are
// not there, or are of another format.
bool ReadPeImage(FilePages *pages, uint64_t headers, PeImage *image);

enum PePlace {
    PlaceStored,    // the file stores them, or they run past all that a section is
    PlaceNotStored, // they are memory of a section for which the file has no bytes
    PlaceNowhere,   // they begin in no section
};

// Finds the file offset of size bytes at a relative virtual address. That they lie in the file is
// not looked at.
PePlace FindPePlace(const PeImage *image, DWORD address, DWORD size, uint64_t *offset);

// The first section of a name, letters compared without case; NULL when there is none.
const PeSection *FindPeSection(const PeImage *image, const char *name);
