// The directory of a group of icons or cursors, as executables hold it: a header of 6 bytes with
// the number of pictures, and 14 bytes for each, which name a resource of their own by its number
// (Microsoft's GRPICONDIR and GRPCURSORDIR).
#pragma once

#include "platform/win32.h"

#include <vector>

#define CURSOR_HOT_SPOT_SIZE 4 // bytes before a cursor's picture: its place, across and down

// A picture as its group tells of it.
struct GroupEntry {
    WORD width;      // pixels; 0 for 256 and more, and in a group of cursors as told
    WORD height;     // rows; the same, and there mostly twice the picture's
    BYTE colorCount; // 0 for 256 and more; icons only
    BYTE reserved;   // icons only
    WORD planes;
    WORD bitCount;
    DWORD size;  // bytes of the picture, a cursor's hot spot included
    WORD number; // of the picture's resource
};

// Reads the entries that lie whole in a directory of size bytes; count is how many it tells.
// Returns false, with none of either, when it has no whole header.
bool ReadGroupEntries(const BYTE *data, size_t size, bool isCursor,
                      std::vector<GroupEntry> *entries, size_t *count);
