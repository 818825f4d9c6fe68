// The drawing objects behind the handles of bitmaps, brushes, pens and fonts.
#pragma once

#include <cstdlib>
#include <memory>
#include <string>
#include <variant>

#include "platform/native/gdi/surface.h"
#include "platform/win32/types.h"

struct FreePixels {
    void operator()(uint32_t *pixels) const
    {
        free(pixels);
    }
};
using PixelBuffer = std::unique_ptr<uint32_t[], FreePixels>;

// A bitmap in memory, of ratio 1, which owns its pixels. In a monochrome one each pixel is black or
// white.
struct Bitmap {
    PixelSurface surface;
    PixelBuffer memory;
    bool isMonochrome;
};

// Makes a black bitmap, sizes in pixels. Returns false, with *bitmap as it was, for a size that is
// empty or that memory does not hold.
bool MakeBitmap(int width, int height, bool isMonochrome, Bitmap *bitmap);

struct Brush {
    uint32_t pixel; // 0x00RRGGBB; of a solid brush
    Bitmap pattern; // the brush's own copy of a pattern; a solid brush has no pixels here
};

// No line is ever drawn with a pen.
struct Pen {
    bool isNull;
};

struct Font {
    int height; // logical pixels of a line; negative: of the letters
    int weight; // 0 for the usual one, 400 normal, 700 bold
    std::string face;
};

using DrawingObject = std::variant<Bitmap, Brush, Pen, Font>;

// Stores an object. Returns its handle, or nullptr when there is no room. A stock object is not
// ended by DeleteObject.
HGDIOBJ AddDrawingObject(DrawingObject &&object, bool isStock = false);

// Takes and gives back one hold on an object; a dead handle is left alone. DeleteObject on an
// object that is held succeeds, but the object lives on until nobody holds it.
void HoldDrawingObject(HGDIOBJ handle);
void ReleaseDrawingObject(HGDIOBJ handle);

// Whether somebody holds it and it is no stock object.
bool IsDrawingObjectHeld(HGDIOBJ handle);

// The object of a handle, or nullptr for a dead handle. It keeps its address while it lives.
DrawingObject *FindDrawingObject(HGDIOBJ handle);

// The same for one kind; nullptr also for an object of another kind.
template <typename Kind> Kind *FindDrawing(HGDIOBJ handle)
{
    DrawingObject *object = FindDrawingObject(handle);
    return object ? std::get_if<Kind>(object) : nullptr;
}

// 0x00BBGGRR and 0x00RRGGBB, one made the other.
inline uint32_t SwapRedBlue(uint32_t color)
{
    return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}
