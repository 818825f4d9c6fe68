// Device contexts: a surface, the part of it that may be drawn on, and what is selected.
#pragma once

#include "platform/native/gdi/objects.h"
#include "platform/win32/gdi.h"

struct DeviceContext {
    PixelSurface surface; // no pixels: nothing is drawn
    RECT clip;            // logical pixels on the surface, and inside it
    bool isMemory;        // made by CreateCompatibleDC; its surface is the selected bitmap's
    HGDIOBJ bitmap;       // nullptr on a surface that is no bitmap's
    HGDIOBJ brush;
    HGDIOBJ pen;
    HGDIOBJ font;
    COLORREF textColor;
    COLORREF backColor;
    int backMode; // TRANSPARENT, OPAQUE
    int rop;      // R2_
    POINT brushOrigin;
};

// Makes a context that draws on the part `clip` of a surface. The pixels must outlive the context.
// The caller closes it. Returns nullptr when there is no room.
HDC OpenSurfaceContext(const PixelSurface &surface, const RECT &clip);

// Ends a context made by OpenSurfaceContext. Returns false for any other.
bool CloseSurfaceContext(HDC dc);

// The context of a handle, or nullptr for a dead one. It keeps its address while it lives.
DeviceContext *FindContext(HDC dc);
