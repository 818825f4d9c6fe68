// What a page tells of one file.
#pragma once

#include "cli/page_parts.h"

// Adds what the file is and carries. Of a damaged one that is what could be read; faults are told
// on err and in the page. Stops early, with the page's elements closed, when it is full or the user
// wants to stop.
void AppendFile(PageFile *file, FILE *stream);
