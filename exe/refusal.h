// Why a file gave nothing, or not all: the readers note what they meet, and afterwards it is told
// in one plain line. The window keeps it to itself; quillmoor-cli prints it.
#pragma once

#include "platform/win32.h"

enum FailureKind {
    FailureNone,
    FailureNotExecutable,  // does not begin with "MZ"
    FailureNewHeader,      // neither NE nor PE
    FailureTooLarge,       // 4 GiB or more
    FailureMemory,         // no memory
    FailureUnreadable,     // the file could not be read whole
    FailureHeaders,        // the PE headers do not lie in the file, or have no PE signature
    Failure64Bit,          // a 64-bit image
    FailureNoSection,      // no section named .rsrc
    FailureRootAddress,    // the resources' address, told as the offset, lies in no section
    FailureDirectory,      // a resource directory runs past the end of the file
    FailureDirectoryEntry, // an entry of a resource directory does
    FailureName,           // a resource's name does
    FailureDataEntry,      // a resource's data entry does
    FailureData,           // a resource's data does
    FailureDataAddress,    // a data entry's address lies in no section
    FailureTable,          // the NE resource table is cut short
    FailureDepth,          // directories lie too deep in each other
    FailureDirectoryCount, // more directories than are followed
    FailureEntryCount,     // more entries of directories than are followed
    FailureKeptBytes,      // the resources together are longer than what is kept
    FailureNames,          // the resources' types and names are, each time they are named
};

// Forgets what was noted. Called before each reading.
void ClearFailure();

// Notes a failure at a file offset (bytes), or past a bound, which is given in the offset's place,
// where its reason tells that; the first one is kept.
void NoteFailure(FailureKind kind, unsigned long long offset = 0);

// Notes a new header, at a file offset, that is neither NE nor PE, with its first two bytes.
void NoteNewHeader(const BYTE signature[2], unsigned long long offset);

// Notes that an image has no section named .rsrc. other is the 8-byte name, padded with bytes of 0,
// of the section that its resources are in, or NULL when there is none.
void NoteMissingSection(const BYTE *other);

// Notes a resource type that is not kept, by its number or its name (code page, cut at 40 bytes).
void NoteOtherType(DWORD type);
void NoteOtherTypeName(const char *name);

// The failure that was noted, FailureNone when there was none.
FailureKind NotedFailure();

#define REASON_SIZE 800

// Writes the reason in one plain line: what failed and at which offset; or, where nothing failed,
// that the file holds no resources, or only of kinds that are not kept, and which. text, which
// holds REASON_SIZE bytes, gets it in the ANSI code page.
void DescribeFailure(char *text);
