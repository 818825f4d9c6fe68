// The PNG codec library: kvtpng32.dll on Windows, where pixels are decoded by the system's imaging
// codec; part of the program on Linux, where libpng does it. Paths are in the ANSI code page.
#pragma once

#include "platform/win32.h"

extern "C" {

// Tells of a PNG file what its header says, without decoding it: a movable block with a
// BITMAPINFOHEADER of its width and height in pixels and its own bits a pixel, all channels
// together (1 to 64). The caller frees it. NULL when the file cannot be read or does not begin as a
// PNG file.
HGLOBAL PNGGetFileInformation(const char *path);

// Decodes a PNG file, whatever its colour type, depth and interlacing, to a movable block with a
// packed DIB: BITMAPINFOHEADER, then bottom-up rows of 32 bits a pixel (blue, green, red, alpha;
// not multiplied by alpha). The caller frees it. A file whose end is missing or whose checksums are
// wrong is decoded when all of its rows are there. NULL when the file cannot be read, lacks pixels
// or is damaged otherwise, or its header tells of more than mostDecodedPixels: such a file is not
// decoded. Unpacked pixels lie in the block alone.
HGLOBAL PNGReadGraphicFile(const char *path);

// Writes a DIB block, as PNGReadGraphicFile makes it or of 24 bits a pixel, uncompressed and stored
// bottom-up, to a PNG file that it creates or replaces. The block stays the caller's. Returns 1; 0
// when the block holds no such DIB, or the file cannot be written, and then leaves none.
int PNGWriteGraphicFile(const char *path, HGLOBAL dib);
}
