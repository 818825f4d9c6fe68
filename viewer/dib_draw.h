// Drawing device-independent bitmaps and icon images into a device context. All of it relies on
// PictureFits.
#pragma once

#include "platform/win32.h"

// Draws the whole picture of a locked block of size bytes with its top-left corner at (x, y). rop
// is a raster operation (SRCCOPY, ...). Whatever cannot be made is left out; nothing is reported.
void DrawDibAt(HDC dc, int x, int y, const void *dib, DWORD size, DWORD rop);

// The same for a block that is not locked; does nothing when it is NULL or cannot be locked.
void DrawDib(HDC dc, int x, int y, HGLOBAL dib, DWORD rop);

// Draws a locked icon image: blended over white at 32 bits; else its mask with SRCAND, then its
// colours with SRCINVERT. Stores the picture's width, height and bits a pixel; 0, 0, 0 when a
// picture of 32 bits could not be made.
void DrawIconImage(HDC dc, int x, int y, const void *icon, LONG *width, LONG *height,
                   WORD *bitCount);
