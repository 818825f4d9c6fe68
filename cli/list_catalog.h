// The parts of the list command that print what the window shows.
#pragma once

#include "cli/listing.h"
#include "platform/win32.h"

// Adds the tree's items, whose texts are in a code page (0: the ANSI page), two blanks a level.
void AppendTree(Listing *listing, HWND tree, UINT codePage);

// Adds openCatalog's entries, whose names are in a code page, as JSON, each with the path as its
// file. The file, which is the one that was read, tells the groups of the icons.
void AppendCatalog(Listing *listing, const std::string &path, FILE *file, UINT codePage);
