#include "tests/support/canvas.h"

#include <algorithm>

struct CanvasPixels {
    DWORD *words;
    HBITMAP bitmap;
    HGDIOBJ before;
};

static DWORD SwapRedBlue(DWORD color)
{
    return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}

Canvas::Canvas(int w, int h, COLORREF color) : width(w), height(h), pixels(new CanvasPixels{})
{
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), w, -h, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void *words = nullptr;
    dc = CreateCompatibleDC(nullptr);
    pixels->bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &words, nullptr, 0);
    pixels->words = (DWORD *)words;
    pixels->before = SelectObject(dc, pixels->bitmap);
    Fill(color);
}

Canvas::~Canvas()
{
    SelectObject(dc, pixels->before);
    DeleteDC(dc);
    DeleteObject(pixels->bitmap);
    delete pixels;
}

void Canvas::Fill(COLORREF color)
{
    GdiFlush();
    std::fill(pixels->words, pixels->words + width * height, SwapRedBlue(color));
}

COLORREF Canvas::At(int x, int y) const
{
    GdiFlush();
    return SwapRedBlue(pixels->words[y * width + x] & 0xFFFFFF);
}
