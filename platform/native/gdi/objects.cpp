#include "platform/native/gdi/objects.h"

#include "platform/native/handles.h"
#include "platform/win32/gdi.h"

#include <sys/mman.h>

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

// Touching the small pages of a large picture one by one takes longer than drawing it.
static void AskForHugePages(void *memory, size_t bytes)
{
    constexpr size_t hugePage = 2 << 20;
    const size_t before = (hugePage - (uintptr_t)memory % hugePage) % hugePage;
    if (bytes >= before + hugePage)
        madvise((char *)memory + before, (bytes - before) / hugePage * hugePage, MADV_HUGEPAGE);
}

bool MakeBitmap(int width, int height, bool isMonochrome, Bitmap *bitmap)
{
    if (width <= 0 || height <= 0)
        return false;
    const size_t pixels = (size_t)width * (size_t)height;
    PixelBuffer memory((uint32_t *)calloc(pixels, sizeof(uint32_t)));
    if (memory == nullptr)
        return false;
    AskForHugePages(memory.get(), pixels * sizeof(uint32_t));
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
