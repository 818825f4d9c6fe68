// Drawing objects, device contexts and drawing. Places and sizes are in logical pixels, which the
// visible half may show as blocks of the screen's.
#pragma once

#include "platform/win32/types.h"

extern "C" {

#define BI_RGB 0u
#define BI_RLE8 1u
#define BI_RLE4 2u
#define BI_BITFIELDS 3u

typedef struct tagBITMAPINFOHEADER {
    DWORD biSize;
    LONG biWidth;
    LONG biHeight;
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;
    DWORD biClrImportant;
} BITMAPINFOHEADER;

typedef struct tagRGBQUAD {
    BYTE rgbBlue;
    BYTE rgbGreen;
    BYTE rgbRed;
    BYTE rgbReserved;
} RGBQUAD;

typedef struct tagBITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    RGBQUAD bmiColors[1];
} BITMAPINFO;

#define RGB(r, g, b) ((COLORREF)((BYTE)(r) | (DWORD)(BYTE)(g) << 8 | (DWORD)(BYTE)(b) << 16))
#define CLR_INVALID 0xFFFFFFFFu

// --- drawing objects ---

// Releases a bitmap, brush, pen or font; one that is selected goes as soon as it no longer is. A
// stock object stays. FALSE for a handle that is none.
BOOL WINAPI DeleteObject(HGDIOBJ object);

// An object that is always there and need not be deleted; NULL for other numbers than these.
#define WHITE_BRUSH 0
#define NULL_PEN 8
HGDIOBJ WINAPI GetStockObject(int number);

// The colours of the program's windows. They are one fixed light set, whatever the desktop's theme;
// 0 for other numbers than these.
#define COLOR_WINDOW 5
#define COLOR_WINDOWTEXT 8
#define COLOR_HIGHLIGHT 13
#define COLOR_HIGHLIGHTTEXT 14
#define COLOR_BTNFACE 15
#define COLOR_BTNSHADOW 16
#define COLOR_GRAYTEXT 17
#define COLOR_BTNTEXT 18
DWORD WINAPI GetSysColor(int index);

// A stock brush of that colour, which need not be deleted; NULL for other numbers.
HBRUSH WINAPI GetSysColorBrush(int index);

// The caller deletes the brush. NULL when there is no room.
HBRUSH WINAPI CreateSolidBrush(COLORREF color);

// A brush that repeats a bitmap, of which it has its own copy. A monochrome pattern shows the
// context's text colour where it is black, its background colour where it is white. The
// caller deletes it. NULL for a dead bitmap, or without memory.
HBRUSH WINAPI CreatePatternBrush(HBITMAP bitmap);

// Does nothing to a live object: a brush follows SetBrushOrgEx at once. FALSE for a dead one.
BOOL WINAPI UnrealizeObject(HGDIOBJ object);

// Makes a font that is drawn with the given height (of a line; negative: of its letters), weight
// (400 normal, 700 bold) and face; the other arguments are 0.
// Faces are replaced by near ones of this system. The caller deletes it.
// NULL when there is no room.
HFONT WINAPI CreateFontA(int height, int width, int escapement, int orientation, int weight,
                         DWORD italic, DWORD underline, DWORD strikeOut, DWORD charSet,
                         DWORD outPrecision, DWORD clipPrecision, DWORD quality,
                         DWORD pitchAndFamily, LPCSTR face);

// Makes a monochrome bitmap (1 plane, 1 bit a pixel) from rows that each fill whole 16-bit words,
// the top row first. The caller deletes it. NULL for other planes and bits, for an empty size and
// for no bytes.
HBITMAP WINAPI CreateBitmap(int width, int height, UINT planes, UINT bitCount, LPCVOID bits);

// Makes a bitmap, in colour, of a device-independent one: any header, depth, run lengths and bit
// fields that Windows draws. The whole picture is read, as far as the header says, with no check;
// flags is CBM_INIT, usage DIB_RGB_COLORS, and header the same as info. The caller deletes it. NULL
// when the header is none, when there is no memory, and for a dead context.
#define CBM_INIT 4u
#define DIB_RGB_COLORS 0u
HBITMAP WINAPI CreateDIBitmap(HDC dc, const BITMAPINFOHEADER *header, DWORD flags, LPCVOID bits,
                              const BITMAPINFO *info, UINT usage);

// --- device contexts ---

// Makes a context to select a bitmap into. The caller deletes it. NULL for a dead context.
HDC WINAPI CreateCompatibleDC(HDC dc);

// Ends a context made by CreateCompatibleDC. FALSE for a dead or another context.
BOOL WINAPI DeleteDC(HDC dc);

// Selects a bitmap, brush, pen or font. Returns the one selected before; NULL on failure. Only
// contexts made by CreateCompatibleDC take a bitmap, and a bitmap is in one of them at a time; none
// takes a monochrome one, which is for pattern brushes.
HGDIOBJ WINAPI SelectObject(HDC dc, HGDIOBJ object);

// Each returns the value before; CLR_INVALID for a dead context.
COLORREF WINAPI SetTextColor(HDC dc, COLORREF color);
COLORREF WINAPI SetBkColor(HDC dc, COLORREF color);

// Each returns the value before; 0 for a dead context or a wrong value.
#define TRANSPARENT 1
#define OPAQUE 2
int WINAPI SetBkMode(HDC dc, int mode);
#define R2_XORPEN 7
#define R2_COPYPEN 13
int WINAPI SetROP2(HDC dc, int rop);

// Sets where pattern brushes begin and stores where they began; old may be NULL. FALSE for a dead
// context.
BOOL WINAPI SetBrushOrgEx(HDC dc, int x, int y, LPPOINT old);

// --- drawing ---

// Copies width x height pixels from a context with a bitmap; what lies outside the bitmap is left
// out. Negative sizes reach to the left and up from the pixels at the corners. FALSE for a dead
// context, a source that is a window's, and another operation.
#define SRCCOPY 0x00CC0020u
#define SRCAND 0x008800C6u
#define SRCINVERT 0x00660046u
BOOL WINAPI BitBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX,
                   int sourceY, DWORD rop);

// Fills a rectangle with the selected brush and operation; the selected pen is NULL_PEN, with which
// the last column and the last row of the rectangle stay. FALSE with another pen and
// for a dead context.
BOOL WINAPI Rectangle(HDC dc, int left, int top, int right, int bottom);

// Both replace what was there, whatever SetROP2 says. 0 for a dead context or brush.
int WINAPI FillRect(HDC dc, const RECT *rect, HBRUSH brush);
int WINAPI FrameRect(HDC dc, const RECT *rect, HBRUSH brush); // one pixel wide, inside; 0 if empty

// Draws a line of `count` bytes of the ANSI code page with its top-left corner at (x, y). FALSE for
// a dead context, a negative count and no text; a count of 0 is none.
BOOL WINAPI TextOutA(HDC dc, int x, int y, LPCSTR text, int count);

// Draws a line of the ANSI code page in the middle of a rectangle and nothing outside of it. The
// format is these four together; count may be -1: up to the terminator. Returns how far the text
// reaches down from the rectangle's top; 0 on failure.
#define DT_CENTER 0x00000001
#define DT_VCENTER 0x00000004
#define DT_SINGLELINE 0x00000020
#define DT_NOPREFIX 0x00000800
int WINAPI DrawTextA(HDC dc, LPCSTR text, int count, LPRECT rect, UINT format);

} // extern "C"
