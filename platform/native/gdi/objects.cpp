#include "platform/native/gdi/objects.h"

#include <sys/mman.h>

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

} // namespace

static HandleTable<StoredObject, HandleKind::Graphics> &Objects()
{
    static HandleTable<StoredObject, HandleKind::Graphics> objects;
    return objects;
}

// Touching the small pages of a large picture one by one takes longer than drawing it.
static void AskForHugePages(void *memory, size_t bytes)
{
    constexpr size_t hugePage = 2 << 20;
    const size_t before = (hugePage - reinterpret_cast<uintptr_t>(memory) % hugePage) % hugePage;
    if (bytes >= before + hugePage)
        madvise(static_cast<char *>(memory) + before, (bytes - before) / hugePage * hugePage,
                MADV_HUGEPAGE);
}

bool MakeBitmap(int width, int height, bool isMonochrome, Bitmap *bitmap)
{
    if (width <= 0 || height <= 0)
        return false;
    const size_t pixels = static_cast<size_t>(width) * static_cast<size_t>(height);
    PixelBuffer memory(static_cast<uint32_t *>(calloc(pixels, sizeof(uint32_t))));
    if (!memory)
        return false;
    AskForHugePages(memory.get(), pixels * sizeof(uint32_t));
    bitmap->surface = {width, height, 1, memory.get(), static_cast<size_t>(width)};
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
    return stored ? &stored->object : nullptr;
}

void HoldDrawingObject(HGDIOBJ handle)
{
    StoredObject *stored = Objects().Find(handle);
    if (stored)
        ++stored->holders;
}

void ReleaseDrawingObject(HGDIOBJ handle)
{
    StoredObject *stored = Objects().Find(handle);
    if (!stored)
        return;
    --stored->holders;
    if (stored->isEnding && stored->holders == 0)
        Objects().Remove(handle);
}

bool IsDrawingObjectHeld(HGDIOBJ handle)
{
    const StoredObject *stored = Objects().Find(handle);
    return stored && !stored->isStock && stored->holders > 0;
}

BOOL WINAPI DeleteObject(HGDIOBJ handle)
{
    StoredObject *stored = Objects().Find(handle);
    if (!stored)
        return FALSE;
    if (stored->isStock)
        return TRUE;
    stored->isEnding = true;
    return stored->holders > 0 || Objects().Remove(handle);
}
