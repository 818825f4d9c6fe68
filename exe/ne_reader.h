// Reads the resources of a 16-bit file in the New Executable layout (Microsoft's NE format).
#pragma once

#include "platform/win32.h"

#include <cstdio>

// Walks the resource table of the NE header at an offset of the file, in bytes, and catalogues its
// bitmaps, icons, string blocks and raw data into openCatalog and the tree (which may be NULL).
// Leaves the file open. Returns 1 when the end of the table was reached, 0 on the first failure;
// what was catalogued before stays in the catalogue, and the reason is noted (exe/refusal.h).
int ReadNeResources(HWND tree, FILE *file, DWORD headerOffset);
