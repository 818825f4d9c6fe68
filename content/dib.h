// Device-independent bitmaps that lie in a memory block: header, colour table and pixel rows, back
// to back, with no file header in front (Microsoft's BITMAPINFOHEADER and BITMAPCOREHEADER). An
// icon image is such a block whose height is twice the picture's; rows of a one-bit mask follow its
// colour rows.
//
// Blocks come from hostile files: PictureFits is asked first, everything below that takes a block
// or a header without its size relies on the answer.
#pragma once

#include "platform/win32.h"

// What a header says, whichever of its two layouts it has. Absent fields are 0.
struct DibHeader {
    DWORD headerSize;  // bytes; 12 for the old layout
    LONG width;        // pixels
    LONG height;       // rows; positive: stored bottom-up
    WORD bitCount;     // bits a pixel
    DWORD compression; // BI_RGB, ...
    DWORD imageSize;   // bytes of the pixels, where it is told
    DWORD colorCount;  // entries of the colour table
    DWORD colorSize;   // bytes an entry: 4, or 3 for the old layout
};

// Reads the header at the start of a block of size bytes. Returns false when the block does not
// hold the whole header: fields that it is too short for are then taken as 0, and colorCount, where
// none is told, follows from bitCount all the same.
bool ReadDibHeader(const void *data, DWORD size, DibHeader *header);

// Bytes from the header's start to the pixels; with the colour table length taken from a hostile
// file it can pass 32 bits. Masks between header and colour table are not counted.
unsigned long long DibPixelStart(const DibHeader *header);

// Bytes of the three colour masks that follow a 40-byte header of bit fields; else 0.
DWORD DibMaskSize(const DibHeader *header);

// Whether the pixels are run-length compressed.
bool IsRunLength(const DibHeader *header);

// Bytes a row, which is padded to a multiple of four.
unsigned long long DibStride(LONG width, WORD bitCount);

// Whether a block of size bytes holds a picture that can be drawn: header, masks, colour table,
// rows and, for an icon image below 32 bits, the mask; and the picture has at most
// mostPicturePixels. Run-length data need not be whole, but of a picture of more than
// mostDecodedPixels they could be: two bytes for each 255 pixels. isIcon tells an icon image, whose
// pixels are never compressed, whatever its header says.
bool PictureFits(const void *data, DWORD size, bool isIcon);

// Stores width, height (its absolute value) and bits a pixel of a block, whose size in bytes is
// given, into those outputs that are not NULL. Returns 0, and stores 0, when the block cannot be
// locked or does not hold a whole header.
int GetDibInfo(HGLOBAL dib, DWORD size, LONG *width, LONG *height, WORD *bitCount);

// Copies what the system wants to know of a locked block of size bytes, made so that it cannot
// refuse it: header, with one plane, masks, colour table and, behind them, run-length data: its
// whole codes and an end mark, with their number of bytes in the header. Stores the copy, which the
// caller unlocks and frees, and returns the address of its header; NULL when there is no memory.
const BYTE *CopyDibInfo(const void *dib, DWORD size, HGLOBAL *copy);

// Where the top-left corner of a picture goes so that it is centred in rect; from the left or top
// edge when it is wider or taller.
POINT CenterPicture(const RECT *rect, LONG width, LONG height);

// Pixel values: for 1, 4 and 8 bits the index into the colour table; for 24 and 32 bits red in bits
// 0-7, green in 8-15, blue in 16-23 and alpha (255 for 24 bits) in 24-31. y counts from the top of
// a picture that is stored bottom-up.
#define NO_PIXEL 0xFFFFFFFFu

// Reads a pixel of a locked block. NO_PIXEL outside the picture and for any other bit count.
DWORD GetDibPixel(const void *dib, LONG x, LONG y);

// The same for the colour part of a locked icon image.
DWORD GetIconPixel(const void *icon, LONG x, LONG y);

// Writes a pixel of a locked block; does nothing outside the picture and for any other bit count.
void SetDibPixel(void *dib, LONG x, LONG y, DWORD value);

// Makes a block of black pixels. palette is NULL or holds 2 to the power bitCount entries of three
// bytes, red, green and blue, for 8 bits and fewer. The caller frees it. NULL when there is no
// memory, or no such picture.
HGLOBAL CreateDib(LONG width, LONG height, const BYTE *palette, WORD bitCount);

// Blends a pixel value with alpha over white; bits 24-31 of the answer are 0.
DWORD BlendOverWhite(DWORD value);

// Makes a 24-bit block of a locked block (an icon image's colour part when isIcon is not 0), every
// pixel blended over white. The caller frees it. NULL on failure.
HGLOBAL FlattenOverWhite(const void *source, bool isIcon);

// Makes a one-bit black and white block of a locked icon image's mask: white is transparent. One of
// 32 bits may lack it and is none for this. The caller frees it. NULL on failure.
HGLOBAL CopyIconMask(const void *icon);

// Makes a block of a locked icon image's colour part alone. The caller frees it. NULL on failure.
HGLOBAL CopyIconColors(const void *icon);
