// Picture files by name, each read by the codec that its extension asks for.
#pragma once

#include "platform/win32.h"

// A codec library's operations, which platform/codec/codec.h describes, and the files they are for.
// The program itself only reads.
struct GraphicFormat {
    HGLOBAL (*getInformation)(const char *name);
    HGLOBAL (*read)(const char *name);
    int (*write)(const char *name, HGLOBAL dib);
    const char *extension; // without the dot
};

extern const GraphicFormat graphicFormats[1];

// The index of the graphic format whose extension (the part after the last dot, letters compared
// without case) the name has, or -1.
int FindGraphicFormat(const char *name);

// Decodes a file into a block of header, colour table and bottom-up rows, of 32 bits a pixel with
// alpha or of 24 without. The caller frees it. NULL when the name has no known format or the file
// cannot be decoded.
HGLOBAL ReadGraphicFile(const char *name);
