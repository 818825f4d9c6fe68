// Picture files by name, each read by the codec that its extension asks for.
#pragma once

#include "platform/win32.h"

// The index of the graphic format whose extension (the part after the last dot, letters compared
// without case) the name has, or -1.
int FindGraphicFormat(const char *name);

// Decodes a file into a block of header, colour table and bottom-up rows, of 32 bits a pixel with
// alpha or of 24 without. The caller frees it. NULL when the name has no known format or the file
// cannot be decoded.
HGLOBAL ReadGraphicFile(const char *name);
