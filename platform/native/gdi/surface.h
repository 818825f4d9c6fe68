// Pixels in memory that the raster operations work on: bitmaps, windows, the pane, an overlay.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

// Positions are in logical pixels, top-left first. On a dense screen one logical pixel is a block
// of memory pixels; logical column x covers the memory columns from MemoryEdge(x) to MemoryEdge(x +
// 1).
struct PixelSurface {
    int width;        // logical pixels
    int height;       // logical rows
    double ratio;     // memory pixels a logical pixel, at least 1
    uint32_t *pixels; // 0x00RRGGBB each, the top row first; the high byte means nothing
    size_t stride;    // memory pixels from one row to the next
};

// The memory column or row at which a logical one begins.
inline int MemoryEdge(const PixelSurface &surface, int logical)
{
    return surface.ratio == 1 ? logical : (int)std::lround(logical * surface.ratio);
}
