// The silent half of opening a file: recognise an MZ executable and run the matching reader.
#pragma once

#include "exe/file_pages.h"

enum ProbeOutcome {
    ProbeRead,          // the reader reached the end of the resources
    ProbeNotExecutable, // does not begin with "MZ"
    ProbeNotStandard,   // the new header is neither NE nor PE
    ProbeFailed,        // the reader returned failure; what it had catalogued is still there
};

#define NE_SIGNATURE 0x454E // "NE"

// The header that stands behind the MZ header.
struct NewHeader {
    DWORD offset;  // in the file, in bytes
    int signature; // NE_SIGNATURE or PE_SIGNATURE
};

// Recognises an MZ executable and stores where its new header begins. Returns ProbeRead,
// ProbeNotExecutable or ProbeNotStandard; forgets what was noted of other files, and notes the
// reason (exe/refusal.h).
ProbeOutcome FindNewHeader(FilePages *pages, NewHeader *header);

// Reads the open file's resources into openCatalog, which must be empty, and into the tree, whose
// items are deleted first; tree may be NULL. The file stays open and belongs to the caller.
ProbeOutcome ProbeFile(HWND tree, FILE *file);

// The ids of the texts that are shown for an outcome, in their order: 0, 1 or 2 of them. count is
// the number of catalogued entries. Returns how many.
int ProbeMessageIds(ProbeOutcome outcome, LONG count, UINT ids[2]);
