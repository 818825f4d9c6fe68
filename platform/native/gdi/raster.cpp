// Raster operations: pixels of a bitmap or a brush put together with those of a surface.
#include <algorithm>
#include <tuple>
#include <vector>

#include "platform/native/gdi/device_context.h"
#include "platform/native/no_memory.h"

namespace
{

// A rectangle in 64 bits: positions come from the program unchecked.
struct Area {
    long long left, top, right, bottom;
};

} // namespace

// Each of its own type, so that the loops over pixels hold no calls.
constexpr auto Copy = [](uint32_t, uint32_t source) { return source; };
constexpr auto And = [](uint32_t destination, uint32_t source) { return destination & source; };
constexpr auto Xor = [](uint32_t destination, uint32_t source) { return destination ^ source; };

static Area Intersect(const Area &a, const Area &b)
{
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

// Windows' reading of a negative size: the corner's pixel, and those to the left of it and above.
static Area Ordered(Area area)
{
    if (area.left > area.right)
        std::tie(area.left, area.right) = std::pair(area.right + 1, area.left + 1);
    if (area.top > area.bottom)
        std::tie(area.top, area.bottom) = std::pair(area.bottom + 1, area.top + 1);
    return area;
}

static Area ClipArea(const DeviceContext &context)
{
    const RECT &clip = context.clip;
    return {clip.left, clip.top, clip.right, clip.bottom};
}

// Puts pixelAt(x, y) on every pixel of the area, which lies inside the surface; on a dense screen
// each is repeated over the memory pixels of its block.
template <typename Operation, typename PixelAt>
static void Combine(const PixelSurface &surface, const Area &area, Operation operation,
                    PixelAt pixelAt)
{
    for (int y = static_cast<int>(area.top); y < static_cast<int>(area.bottom); ++y) {
        for (int row = MemoryEdge(surface, y); row < MemoryEdge(surface, y + 1); ++row) {
            uint32_t *out = surface.pixels + surface.stride * static_cast<size_t>(row);
            int column = MemoryEdge(surface, static_cast<int>(area.left));
            for (int x = static_cast<int>(area.left); x < static_cast<int>(area.right); ++x) {
                const uint32_t pixel = pixelAt(x, y);
                for (const int end = MemoryEdge(surface, x + 1); column < end; ++column)
                    out[column] = operation(out[column], pixel);
            }
        }
    }
}

// The same with one pixel everywhere.
template <typename Operation>
static void CombineSolid(const PixelSurface &surface, const Area &area, Operation operation,
                         uint32_t pixel)
{
    const int left = MemoryEdge(surface, static_cast<int>(area.left));
    const int right = MemoryEdge(surface, static_cast<int>(area.right));
    for (int row = MemoryEdge(surface, static_cast<int>(area.top));
         row < MemoryEdge(surface, static_cast<int>(area.bottom)); ++row) {
        uint32_t *out = surface.pixels + surface.stride * static_cast<size_t>(row);
        for (int column = left; column < right; ++column)
            out[column] = operation(out[column], pixel);
    }
}

// The remainder that is never negative.
static int Wrap(int value, int size)
{
    const int rest = value % size;
    return rest < 0 ? rest + size : rest;
}

template <typename Operation>
static void FillArea(const DeviceContext &context, const Area &area, const Brush &brush,
                     Operation operation)
{
    const Area placed = Intersect(area, ClipArea(context));
    const PixelSurface &pattern = brush.pattern.surface;
    if (!pattern.pixels) {
        CombineSolid(context.surface, placed, operation, brush.pixel);
        return;
    }
    const POINT start = context.brushOrigin;
    const uint32_t text = SwapRedBlue(context.textColor);
    const uint32_t back = SwapRedBlue(context.backColor);
    Combine(context.surface, placed, operation, [&](int x, int y) {
        const size_t row = static_cast<size_t>(Wrap(y - start.y, pattern.height));
        const size_t column = static_cast<size_t>(Wrap(x - start.x, pattern.width));
        const uint32_t pixel = pattern.pixels[row * pattern.stride + column];
        if (!brush.pattern.isMonochrome)
            return pixel;
        return pixel == 0 ? text : back;
    });
}

BOOL WINAPI BitBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX,
                   int sourceY, DWORD rop)
{
    const DeviceContext *to = FindContext(dc);
    const DeviceContext *from = FindContext(source);
    if (!to || !from || !from->isMemory)
        return FALSE;
    PixelSurface picture = from->surface;
    std::vector<uint32_t> kept;
    if (picture.pixels == to->surface.pixels) {
        // What is copied over itself is copied as it was.
        if (!DoesMemorySuffice([&] {
                kept.assign(picture.pixels,
                            picture.pixels + picture.stride * static_cast<size_t>(picture.height));
            }))
            return FALSE;
        picture.pixels = kept.data();
    }
    // How far from a place on the surface the same pixel is in the picture.
    const long long acrossBy = static_cast<long long>(sourceX) - x;
    const long long downBy = static_cast<long long>(sourceY) - y;
    const Area inPicture = {-acrossBy, -downBy, picture.width - acrossBy, picture.height - downBy};
    const Area asked =
        Ordered({x, y, static_cast<long long>(x) + width, static_cast<long long>(y) + height});
    const Area area = Intersect(Intersect(asked, inPicture), ClipArea(*to));
    const auto pixelAt = [&](int column, int row) {
        return picture.pixels[static_cast<size_t>(row + downBy) * picture.stride +
                              static_cast<size_t>(column + acrossBy)];
    };
    switch (rop) {
    case SRCCOPY: Combine(to->surface, area, Copy, pixelAt); return TRUE;
    case SRCAND: Combine(to->surface, area, And, pixelAt); return TRUE;
    case SRCINVERT: Combine(to->surface, area, Xor, pixelAt); return TRUE;
    default: return FALSE;
    }
}

BOOL WINAPI Rectangle(HDC dc, int left, int top, int right, int bottom)
{
    const DeviceContext *context = FindContext(dc);
    if (!context || !FindDrawing<Pen>(context->pen)->isNull)
        return FALSE;
    // The corners may come in any order; an outline of no pen still takes its place.
    const Area area = {std::min(left, right), std::min(top, bottom), std::max(left, right) - 1LL,
                       std::max(top, bottom) - 1LL};
    const Brush &brush = *FindDrawing<Brush>(context->brush);
    if (context->rop == R2_XORPEN)
        FillArea(*context, area, brush, Xor);
    else
        FillArea(*context, area, brush, Copy);
    return TRUE;
}

int WINAPI FillRect(HDC dc, const RECT *rect, HBRUSH handle)
{
    const DeviceContext *context = FindContext(dc);
    const Brush *brush = FindDrawing<Brush>(handle);
    if (!context || !brush || !rect)
        return 0;
    FillArea(*context, Ordered({rect->left, rect->top, rect->right, rect->bottom}), *brush, Copy);
    return 1;
}

int WINAPI FrameRect(HDC dc, const RECT *rect, HBRUSH handle)
{
    const DeviceContext *context = FindContext(dc);
    const Brush *brush = FindDrawing<Brush>(handle);
    if (!context || !brush || !rect || rect->left >= rect->right || rect->top >= rect->bottom)
        return 0;
    const Area all = {rect->left, rect->top, rect->right, rect->bottom};
    const Area edges[] = {{all.left, all.top, all.right, all.top + 1},
                          {all.left, all.bottom - 1, all.right, all.bottom},
                          {all.left, all.top, all.left + 1, all.bottom},
                          {all.right - 1, all.top, all.right, all.bottom}};
    for (const Area &edge : edges)
        FillArea(*context, edge, *brush, Copy);
    return 1;
}
