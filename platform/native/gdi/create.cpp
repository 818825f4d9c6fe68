// Brushes, fonts and bitmaps that the program makes.
#include <algorithm>

#include "platform/native/gdi/device_context.h"
#include "platform/native/gdi/dib_decode.h"
#include "platform/native/no_memory.h"

HBRUSH WINAPI CreateSolidBrush(COLORREF color)
{
    return static_cast<HBRUSH>(AddDrawingObject(Brush{SwapRedBlue(color), {}}));
}

HBRUSH WINAPI CreatePatternBrush(HBITMAP handle)
{
    const Bitmap *bitmap = FindDrawing<Bitmap>(handle);
    Brush brush{};
    if (!bitmap || !MakeBitmap(bitmap->surface.width, bitmap->surface.height, bitmap->isMonochrome,
                               &brush.pattern))
        return nullptr;
    std::copy_n(bitmap->surface.pixels,
                bitmap->surface.stride * static_cast<size_t>(bitmap->surface.height),
                brush.pattern.surface.pixels);
    return static_cast<HBRUSH>(AddDrawingObject(std::move(brush)));
}

BOOL WINAPI UnrealizeObject(HGDIOBJ object)
{
    return FindDrawingObject(object) ? TRUE : FALSE;
}

HFONT WINAPI CreateFontA(int height, int, int, int, int weight, DWORD, DWORD, DWORD, DWORD, DWORD,
                         DWORD, DWORD, DWORD, LPCSTR face)
{
    return UnlessMemoryRunsOut<HFONT>(nullptr, [=] {
        return static_cast<HFONT>(AddDrawingObject(Font{height, weight, face ? face : ""}));
    });
}

HBITMAP WINAPI CreateBitmap(int width, int height, UINT planes, UINT bitCount, LPCVOID bits)
{
    Bitmap bitmap{};
    if (planes != 1 || bitCount != 1 || !bits || !MakeBitmap(width, height, true, &bitmap))
        return nullptr;
    const BYTE *row = static_cast<const BYTE *>(bits);
    uint32_t *out = bitmap.surface.pixels;
    for (int y = 0; y < height; ++y, row += (width + 15) / 16 * 2)
        for (int x = 0; x < width; ++x)
            *out++ = (row[x / 8] << x % 8 & 0x80) != 0 ? 0xFFFFFF : 0;
    return static_cast<HBITMAP>(AddDrawingObject(std::move(bitmap)));
}

HBITMAP WINAPI CreateDIBitmap(HDC dc, const BITMAPINFOHEADER *, DWORD flags, LPCVOID bits,
                              const BITMAPINFO *info, UINT usage)
{
    DibLayout layout;
    Bitmap bitmap{};
    if (!FindContext(dc) || flags != CBM_INIT || !bits || !info || usage != DIB_RGB_COLORS ||
        !ReadDibLayout(info, SIZE_MAX, &layout) ||
        !DecodeDib(layout, info, bits, layout.pixelsSize, &bitmap))
        return nullptr;
    return static_cast<HBITMAP>(AddDrawingObject(std::move(bitmap)));
}
