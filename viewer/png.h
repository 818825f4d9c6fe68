// PNG pictures among the icons (ISO/IEC 15948). The codec takes files by name, so each drawing
// writes a temporary file, which is gone again before the drawing returns.
#pragma once

#include "platform/win32.h"

// What was drawn; all 0 when the picture could not be decoded.
struct PngPicture {
    LONG width;    // pixels
    LONG height;   // rows
    WORD bitCount; // 32, whatever the file's
    LONG y;        // of the picture's top edge, from rect's
};

// Draws a PNG picture of size bytes, blended over white and centred in rect. Returns true when the
// data is a PNG picture and its temporary file was written whole, even if it could then not be
// decoded; 0 leaves the data to the drawing of icon images.
bool DrawPngImage(HDC dc, const RECT *rect, HGLOBAL data, DWORD size, PngPicture *picture);

// Makes a name in the temporary folder from the first three characters of prefix, a number that is
// not 0 and extension (with its dot). out holds at least MAX_PATH bytes. No file is made. Returns
// the name's length, 0 when there is none that fits.
int MakeTempFileName(char *out, const char *prefix, const char *extension, UINT unique);
