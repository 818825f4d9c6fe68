// Reads the resources of a file in the Portable Executable layout (Microsoft's PE format).
#pragma once

#include "platform/win32.h"

#include <cstdio>

// Reads the whole file into memory, finds the section named .rsrc and catalogues its bitmaps,
// icons, string blocks and raw data into openCatalog and the tree (which may be NULL). Leaves the
// file open. Returns 1, or 0 when the file cannot be taken in, its headers or its section are not
// found, or any item lies outside the file; what was catalogued before stays in the catalogue, and
// the reason is noted (exe/refusal.h).
int ReadPeResources(HWND tree, FILE *file);
