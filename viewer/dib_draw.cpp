#include "viewer/dib_draw.h"

#include "content/dib.h"

#include <cstdlib>

static void CopyBitmap(HDC dc, int x, int y, int width, int height, HBITMAP bitmap, DWORD rop)
{
    HDC memory = CreateCompatibleDC(dc);
    if (memory == nullptr)
        return;
    HGDIOBJ old = SelectObject(memory, bitmap);
    if (old != nullptr) {
        BitBlt(dc, x, y, width, height, memory, 0, 0, rop);
        SelectObject(memory, old);
    }
    DeleteDC(memory);
}

void DrawDibAt(HDC dc, int x, int y, const void *dib, DWORD size, DWORD rop)
{
    HGLOBAL copy;
    const BYTE *info = CopyDibInfo(dib, size, &copy);
    if (info == nullptr)
        return;
    DibHeader header;
    ReadDibHeader(info, sizeof(BITMAPINFOHEADER), &header);
    const size_t start = (size_t)DibPixelStart(&header) + DibMaskSize(&header);
    const BYTE *pixels = (IsRunLength(&header) ? info : (const BYTE *)dib) + start;
    HBITMAP bitmap = CreateDIBitmap(dc, (const BITMAPINFOHEADER *)info, CBM_INIT, pixels,
                                    (const BITMAPINFO *)info, DIB_RGB_COLORS);
    GlobalUnlock(copy);
    GlobalFree(copy);
    if (bitmap == nullptr)
        return;
    CopyBitmap(dc, x, y, header.width, abs(header.height), bitmap, rop);
    DeleteObject(bitmap);
}

void DrawDib(HDC dc, int x, int y, HGLOBAL dib, DWORD rop)
{
    const void *data = dib != nullptr ? GlobalLock(dib) : nullptr;
    if (data == nullptr)
        return;
    DrawDibAt(dc, x, y, data, (DWORD)GlobalSize(dib), rop);
    GlobalUnlock(dib);
}

// Draws a block that was made for this one drawing, and frees it.
static void DrawAndFree(HDC dc, int x, int y, HGLOBAL dib, DWORD rop)
{
    if (dib == nullptr)
        return;
    DrawDib(dc, x, y, dib, rop);
    GlobalFree(dib);
}

void DrawIconImage(HDC dc, int x, int y, const void *icon, LONG *width, LONG *height,
                   WORD *bitCount)
{
    DibHeader header;
    ReadDibHeader(icon, sizeof(BITMAPINFOHEADER), &header);
    *width = header.width;
    *height = header.height / 2;
    *bitCount = header.bitCount;
    if (header.bitCount == 32) {
        HGLOBAL flat = FlattenOverWhite(icon, true);
        if (flat == nullptr) {
            *width = *height = 0;
            *bitCount = 0;
        }
        DrawAndFree(dc, x, y, flat, SRCCOPY);
        return;
    }
    DrawAndFree(dc, x, y, CopyIconMask(icon), SRCAND);
    DrawAndFree(dc, x, y, CopyIconColors(icon), SRCINVERT);
}
