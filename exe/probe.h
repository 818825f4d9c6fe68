// The silent half of opening a file: recognise an MZ executable and run the matching reader.
#pragma once

#include "platform/win32.h"

#include <cstdio>

enum ProbeOutcome {
    ProbeRead,          // the reader reached the end of the resources
    ProbeNotExecutable, // does not begin with "MZ"
    ProbeNotStandard,   // the new header is neither NE nor PE
    ProbeFailed,        // the reader returned failure; what it had catalogued is still there
};

// Reads the open file's resources into openCatalog, which must be empty, and into the tree, whose
// items are deleted first; tree may be NULL. The file stays open and belongs to the caller.
ProbeOutcome ProbeFile(HWND tree, FILE *file);

// The ids of the texts that are shown for an outcome, in their order: 0, 1 or 2 of them. count is
// the number of catalogued entries. Returns how many.
int ProbeMessageIds(ProbeOutcome outcome, LONG count, UINT ids[2]);
