// Pixels in memory that the raster operations work on: bitmaps, windows, the pane, an overlay.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

// A view of pixels that somebody else owns and keeps. Positions are in logical pixels from the top
// left corner. On a dense screen one logical pixel is a block of memory pixels; logical column x
// covers the memory columns from MemoryEdge(x) up to, without, MemoryEdge(x + 1), rows alike.
struct PixelSurface {
    int width;        // logical pixels
    int height;       // logical rows
    double ratio;     // memory pixels to a logical pixel, each way; at least 1
    uint32_t *pixels; // 0x00RRGGBB each, the top row first; the high byte means nothing.
                      // nullptr: there is nothing to draw on
    size_t stride;    // memory pixels, not bytes, from one memory row to the next
};

// The memory pixel, counted from the left or the top, at which a logical column or row begins.
inline int MemoryEdge(const PixelSurface &surface, int logical)
{
    return surface.ratio == 1 ? logical : static_cast<int>(std::lround(logical * surface.ratio));
}
