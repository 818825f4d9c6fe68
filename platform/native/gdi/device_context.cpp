#include "platform/native/gdi/device_context.h"

#include <algorithm>
#include <utility>

#include "platform/native/gdi/stock.h"
#include "platform/native/handles.h"

static HandleTable<DeviceContext, HandleKind::DeviceContext> &Contexts()
{
    static HandleTable<DeviceContext, HandleKind::DeviceContext> contexts;
    return contexts;
}

// NULL also when one of the stock objects could not be made: what is drawn with is always there.
static HDC AddContext(const DeviceContext &context)
{
    if (!context.brush || !context.pen || !context.font || (context.isMemory && !context.bitmap))
        return nullptr;
    const HDC dc = static_cast<HDC>(Contexts().Add(context));
    if (!dc)
        return nullptr;
    for (HGDIOBJ object : {context.bitmap, context.brush, context.pen, context.font})
        HoldDrawingObject(object);
    return dc;
}

static void RemoveContext(HDC dc)
{
    const DeviceContext context = *FindContext(dc);
    Contexts().Remove(dc);
    for (HGDIOBJ object : {context.bitmap, context.brush, context.pen, context.font})
        ReleaseDrawingObject(object);
}

// A context with everything as Windows sets it at first, and no surface.
static DeviceContext FreshContext()
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
static HGDIOBJ *PlaceFor(DeviceContext *context, HGDIOBJ object)
{
    const DrawingObject *drawing = FindDrawingObject(object);
    if (!drawing)
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

static void UseBitmap(DeviceContext *context, HGDIOBJ handle)
{
    const Bitmap *bitmap = FindDrawing<Bitmap>(handle);
    if (!bitmap)
        return;
    context->surface = bitmap->surface;
    context->clip = {0, 0, context->surface.width, context->surface.height};
    // The stock bitmap is every fresh context's; it stays black.
    if (handle == StockObject(Stock::Bitmap))
        context->clip = {};
}

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
    if (!context || context->isMemory)
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
    if (!FindContext(dc))
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
    if (!context || !context->isMemory)
        return FALSE;
    RemoveContext(dc);
    return TRUE;
}

HGDIOBJ WINAPI SelectObject(HDC dc, HGDIOBJ object)
{
    DeviceContext *context = FindContext(dc);
    HGDIOBJ *place = context ? PlaceFor(context, object) : nullptr;
    if (!place)
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
    return context ? std::exchange(context->textColor, color) : CLR_INVALID;
}

COLORREF WINAPI SetBkColor(HDC dc, COLORREF color)
{
    DeviceContext *context = FindContext(dc);
    return context ? std::exchange(context->backColor, color) : CLR_INVALID;
}

int WINAPI SetBkMode(HDC dc, int mode)
{
    DeviceContext *context = FindContext(dc);
    if (!context || (mode != TRANSPARENT && mode != OPAQUE))
        return 0;
    return std::exchange(context->backMode, mode);
}

int WINAPI SetROP2(HDC dc, int rop)
{
    DeviceContext *context = FindContext(dc);
    if (!context || (rop != R2_XORPEN && rop != R2_COPYPEN))
        return 0;
    return std::exchange(context->rop, rop);
}

BOOL WINAPI SetBrushOrgEx(HDC dc, int x, int y, LPPOINT old)
{
    DeviceContext *context = FindContext(dc);
    if (!context)
        return FALSE;
    if (old)
        *old = context->brushOrigin;
    context->brushOrigin = {x, y};
    return TRUE;
}
