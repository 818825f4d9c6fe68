#include "platform/native/gdi/objects.h"

#include "platform/native/handles.h"
#include "platform/win32/gdi.h"

namespace
{

struct StoredObject {
    DrawingObject object;
    bool isStock;
    int holders;
    bool isEnding; // deleted while it was held
};

HandleTable<StoredObject, HandleKind::Graphics> &Objects()
{
    static HandleTable<StoredObject, HandleKind::Graphics> objects;
    return objects;
}

} // namespace

bool MakeBitmap(int width, int height, bool isMonochrome, Bitmap *bitmap)
{
    if (width <= 0 || height <= 0)
        return false;
    PixelBuffer memory((uint32_t *)calloc((size_t)width * (size_t)height, sizeof(uint32_t)));
    if (memory == nullptr)
        return false;
    bitmap->surface = {width, height, 1, memory.get(), (size_t)width};
    bitmap->memory = std::move(memory);
    bitmap->isMonochrome = isMonochrome;
    return true;
}

HGDIOBJ AddDrawingObject(DrawingObject &&object, bool isStock)
{
    return Objects().Add(StoredObject{std::move(object), isStock, 0, false});
}

DrawingObject *FindDrawingObject(HGDIOBJ handle)
{
    StoredObject *stored = Objects().Find(handle);
    return stored == nullptr ? nullptr : &stored->object;
}

void HoldDrawingObject(HGDIOBJ handle)
{
    StoredObject *stored = Objects().Find(handle);
    if (stored != nullptr)
        stored->holders++;
}

void ReleaseDrawingObject(HGDIOBJ handle)
{
    StoredObject *stored = Objects().Find(handle);
    if (stored == nullptr)
        return;
    stored->holders--;
    if (stored->isEnding && stored->holders == 0)
        Objects().Remove(handle);
}

bool IsDrawingObjectHeld(HGDIOBJ handle)
{
    const StoredObject *stored = Objects().Find(handle);
    return stored != nullptr && !stored->isStock && stored->holders > 0;
}

BOOL WINAPI DeleteObject(HGDIOBJ handle)
{
    StoredObject *stored = Objects().Find(handle);
    if (stored == nullptr)
        return FALSE;
    if (stored->isStock)
        return TRUE;
    stored->isEnding = true;
    return stored->holders > 0 || Objects().Remove(handle);
}
