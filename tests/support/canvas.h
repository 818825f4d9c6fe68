// A surface to draw on, whose pixels a test reads.
#pragma once

#include "platform/win32.h"

#include <algorithm>
#include <string>

struct CanvasPixels; // the system's own

struct Canvas {
    Canvas(int width, int height, COLORREF color = RGB(255, 255, 255));
    ~Canvas();
    Canvas(const Canvas &) = delete;
    Canvas &operator=(const Canvas &) = delete;

    void Fill(COLORREF color);
    COLORREF At(int x, int y) const;

    // The pixels, a letter each and a line feed after each row: '.' white, '#' black,
    // R G B C M Y the pure colours, '?' any other.
    std::string Picture() const;

    HDC dc; // draws in copy mode with Windows' first settings; ends with the canvas
    int width;
    int height;
    CanvasPixels *pixels;
};

// The rectangle around the pixels of width x height that count; (width, height, 0, 0) for none.
template <typename Counts> RECT RectAround(LONG width, LONG height, const Counts &counts)
{
    RECT around = {width, height, 0, 0};
    for (LONG y = 0; y < height; y++)
        for (LONG x = 0; x < width; x++)
            if (counts(x, y))
                around = {std::min(around.left, x), std::min(around.top, y),
                          std::max(around.right, x + 1), std::max(around.bottom, y + 1)};
    return around;
}
