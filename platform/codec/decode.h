// Decoding the bytes of a PNG file, which each system's own library does.
#pragma once

#include "platform/codec/png_file.h"
#include "platform/win32.h"

// Decodes a file into a block as PNGReadGraphicFile makes it; NULL at the first fault.
HGLOBAL DecodePng(const PngBytes &file);

// The same for a file whose end is missing or whose checksums are wrong, when all of its rows are
// there. Memory that is not there for mending is told by std::bad_alloc.
HGLOBAL DecodeOrMendPng(const PngBytes &file);

// Makes a movable block with a BITMAPINFOHEADER of these fields and rowsSize bytes of 0 behind it.
// The caller frees it. NULL when there is no memory.
HGLOBAL MakeDibBlock(DWORD width, DWORD height, DWORD bits, DWORD rowsSize);

// Makes a movable block for a bottom-up DIB of 32 bits a pixel with its header filled in and its
// rows zero. The caller frees it. NULL when there is no memory, or the picture is empty or too
// large.
HGLOBAL MakeCodecDib(DWORD width, DWORD height);
