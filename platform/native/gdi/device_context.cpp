#include "platform/native/gdi/device_context.h"

#include "platform/native/gdi/stock.h"
#include "platform/native/handles.h"

#include <algorithm>
#include <utility>

namespace
{

HandleTable<DeviceContext, HandleKind::DeviceContext> &Contexts()
{
    static HandleTable<DeviceContext, HandleKind::DeviceContext> contexts;
    return contexts;
}

HDC AddContext(const DeviceContext &context)
{
    const HDC dc = (HDC)Contexts().Add(context);
    if (dc == nullptr)
        return nullptr;
    for (HGDIOBJ object : {context.bitmap, context.brush, context.pen, context.font})
        HoldDrawingObject(object);
    return dc;
}

void RemoveContext(HDC dc)
{
    const DeviceContext context = *FindContext(dc);
    Contexts().Remove(dc);
    for (HGDIOBJ object : {context.bitmap, context.brush, context.pen, context.font})
        ReleaseDrawingObject(object);
}

// A context with everything as Windows sets it at first, and no surface.
DeviceContext FreshContext()
{
    DeviceContext context{};
    context.brush = StockObject(Stock::WhiteBrush);
    context.pen = StockObject(Stock::BlackPen);
    context.font = StockObject(Stock::SystemFont);
    context.textColor = RGB(0, 0, 0);
    context.backColor = RGB(255, 255, 255);
    context.backMode = OPAQUE;
    context.rop = R2_COPYPEN;
    return context;
}

// The place in the context where an object of that kind is selected; nullptr when it takes none.
HGDIOBJ *PlaceFor(DeviceContext *context, HGDIOBJ object)
{
    const DrawingObject *drawing = FindDrawingObject(object);
    if (drawing == nullptr)
        return nullptr;
    if (const Bitmap *bitmap = std::get_if<Bitmap>(drawing)) {
        const bool isOwn = object == context->bitmap || object == StockObject(Stock::Bitmap);
        const bool isFree = !bitmap->isMonochrome && !IsDrawingObjectHeld(object);
        return context->isMemory && (isOwn || isFree) ? &context->bitmap : nullptr;
    }
    if (std::holds_alternative<Brush>(*drawing))
        return &context->brush;
    return std::holds_alternative<Pen>(*drawing) ? &context->pen : &context->font;
}

void UseBitmap(DeviceContext *context, HGDIOBJ bitmap)
{
    context->surface = FindDrawing<Bitmap>(bitmap)->surface;
    context->clip = {0, 0, context->surface.width, context->surface.height};
    // The stock bitmap is every fresh context's; it stays black.
    if (bitmap == StockObject(Stock::Bitmap))
        context->clip = {};
}

} // namespace

HDC OpenSurfaceContext(const PixelSurface &surface, const RECT &clip)
{
    DeviceContext context = FreshContext();
    context.surface = surface;
    context.clip = {std::max(clip.left, 0), std::max(clip.top, 0),
                    std::min(clip.right, surface.width), std::min(clip.bottom, surface.height)};
    return AddContext(context);
}

bool CloseSurfaceContext(HDC dc)
{
    const DeviceContext *context = FindContext(dc);
    if (context == nullptr || context->isMemory)
        return false;
    RemoveContext(dc);
    return true;
}

DeviceContext *FindContext(HDC dc)
{
    return Contexts().Find(dc);
}

HDC WINAPI CreateCompatibleDC(HDC dc)
{
    if (FindContext(dc) == nullptr)
        return nullptr;
    DeviceContext context = FreshContext();
    context.isMemory = true;
    context.bitmap = StockObject(Stock::Bitmap);
    UseBitmap(&context, context.bitmap);
    return AddContext(context);
}

BOOL WINAPI DeleteDC(HDC dc)
{
    const DeviceContext *context = FindContext(dc);
    if (context == nullptr || !context->isMemory)
        return FALSE;
    RemoveContext(dc);
    return TRUE;
}

HGDIOBJ WINAPI SelectObject(HDC dc, HGDIOBJ object)
{
    DeviceContext *context = FindContext(dc);
    HGDIOBJ *place = context == nullptr ? nullptr : PlaceFor(context, object);
    if (place == nullptr)
        return nullptr;
    HoldDrawingObject(object);
    const HGDIOBJ before = std::exchange(*place, object);
    if (place == &context->bitmap)
        UseBitmap(context, object);
    ReleaseDrawingObject(before);
    return before;
}

COLORREF WINAPI SetTextColor(HDC dc, COLORREF color)
{
    DeviceContext *context = FindContext(dc);
    return context == nullptr ? CLR_INVALID : std::exchange(context->textColor, color);
}

COLORREF WINAPI SetBkColor(HDC dc, COLORREF color)
{
    DeviceContext *context = FindContext(dc);
    return context == nullptr ? CLR_INVALID : std::exchange(context->backColor, color);
}

int WINAPI SetBkMode(HDC dc, int mode)
{
    DeviceContext *context = FindContext(dc);
    if (context == nullptr || (mode != TRANSPARENT && mode != OPAQUE))
        return 0;
    return std::exchange(context->backMode, mode);
}

int WINAPI SetROP2(HDC dc, int rop)
{
    DeviceContext *context = FindContext(dc);
    if (context == nullptr || (rop != R2_XORPEN && rop != R2_COPYPEN))
        return 0;
    return std::exchange(context->rop, rop);
}

BOOL WINAPI SetBrushOrgEx(HDC dc, int x, int y, LPPOINT old)
{
    DeviceContext *context = FindContext(dc);
    if (context == nullptr)
        return FALSE;
    if (old != nullptr)
        *old = context->brushOrigin;
    context->brushOrigin = {x, y};
    return TRUE;
}
