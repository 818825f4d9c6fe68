#include "platform/native/gdi/device_context.h"
#include "tests/support/canvas.h"

#include <algorithm>
#include <vector>

struct CanvasPixels {
    std::vector<uint32_t> words;
};

Canvas::Canvas(int w, int h, COLORREF color) : width(w), height(h), pixels(new CanvasPixels)
{
    pixels->words.resize((size_t)w * (size_t)h);
    const PixelSurface surface = {w, h, 1, pixels->words.data(), (size_t)w};
    dc = OpenSurfaceContext(surface, {0, 0, w, h});
    Fill(color);
}

Canvas::~Canvas()
{
    CloseSurfaceContext(dc);
    delete pixels;
}

void Canvas::Fill(COLORREF color)
{
    std::fill(pixels->words.begin(), pixels->words.end(), SwapRedBlue(color));
}

COLORREF Canvas::At(int x, int y) const
{
    return SwapRedBlue(pixels->words[(size_t)(y * width + x)] & 0xFFFFFF);
}
