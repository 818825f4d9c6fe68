// A surface to draw on, whose pixels a test reads.
#pragma once

#include "platform/win32.h"

#include <string>

struct CanvasPixels; // the system's own

struct Canvas {
    Canvas(int width, int height, COLORREF color = RGB(255, 255, 255));
    ~Canvas();
    Canvas(const Canvas &) = delete;
    Canvas &operator=(const Canvas &) = delete;

    void Fill(COLORREF color);
    COLORREF At(int x, int y) const;

    // A rectangle of pixels, a letter each and a line feed after each row: '.' white, '#' black,
    // R G B C M Y the pure colours, '?' any other.
    std::string Picture(int left, int top, int right, int bottom) const;
    std::string Picture() const;

    HDC dc; // draws in copy mode with Windows' first settings; ends with the canvas
    int width;
    int height;
    CanvasPixels *pixels;
};
