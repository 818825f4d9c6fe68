// One channel of a pixel of bit fields.
#pragma once

#include <bit>
#include <cstdint>

// The bits of a pixel under a mask, which are together, as 8 bits: few are repeated to fill them,
// of many the top 8 count. 0 for a mask of nothing.
inline uint32_t ColorChannel(uint32_t pixel, uint32_t mask)
{
    if (mask == 0)
        return 0;
    const int shift = std::countr_zero(mask);
    const int width = static_cast<int>(std::bit_width(mask >> shift));
    uint32_t value = (pixel & mask) >> shift;
    if (width >= 8)
        return value >> (width - 8);
    uint32_t filled = 0;
    for (int at = 8 - width; at > -width; at -= width)
        filled |= at >= 0 ? value << at : value >> -at;
    return filled;
}
