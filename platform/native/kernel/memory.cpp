// Movable memory blocks on the C heap. Large zeroed blocks come from calloc, whose pages the system
// zeroes when they are first touched.
#include "platform/native/handles.h"
#include "platform/win32/kernel.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace
{

struct Block {
    char *bytes;     // nullptr only when the size is 0
    size_t size;     // what the caller asked for
    size_t capacity; // what the heap gave; the part past the size holds anything
    unsigned locks;
};

HandleTable<Block, HandleKind::Memory> &Blocks()
{
    static HandleTable<Block, HandleKind::Memory> blocks;
    return blocks;
}

// Makes room for `bytes` bytes. Growth takes a half more than what there is, so that growing record
// by record copies each byte a bounded number of times.
bool Reserve(Block *block, size_t bytes)
{
    if (bytes <= block->capacity)
        return true;
    const size_t spare = block->size / 2;
    size_t capacity = spare < SIZE_MAX - block->size ? std::max(bytes, block->size + spare) : bytes;
    char *moved = (char *)realloc(block->bytes, capacity);
    if (moved == nullptr) {
        capacity = bytes;
        moved = (char *)realloc(block->bytes, capacity);
    }
    if (moved == nullptr)
        return false;
    block->bytes = moved;
    block->capacity = capacity;
    return true;
}

} // namespace

HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T bytes)
{
    if ((flags & GMEM_MOVEABLE) == 0)
        return nullptr;
    char *memory = nullptr;
    if (bytes > 0) {
        memory = (char *)((flags & GMEM_ZEROINIT) != 0 ? calloc(1, bytes) : malloc(bytes));
        if (memory == nullptr)
            return nullptr;
    }
    HGLOBAL handle = Blocks().Add(Block{memory, bytes, bytes, 0});
    if (handle == nullptr)
        free(memory);
    return handle;
}

HGLOBAL WINAPI GlobalReAlloc(HGLOBAL handle, SIZE_T bytes, UINT flags)
{
    Block *block = Blocks().Find(handle);
    if (block == nullptr)
        return nullptr;
    if (bytes == 0) {
        if (block->locks > 0)
            return nullptr;
        free(block->bytes);
        *block = {};
        return handle;
    }
    // A locked block stays where it is unless the caller allows the move.
    if (block->locks > 0 && (flags & GMEM_MOVEABLE) == 0 && bytes > block->capacity)
        return nullptr;
    if (!Reserve(block, bytes))
        return nullptr;
    if (bytes > block->size && (flags & GMEM_ZEROINIT) != 0)
        memset(block->bytes + block->size, 0, bytes - block->size);
    block->size = bytes;
    return handle;
}

HGLOBAL WINAPI GlobalFree(HGLOBAL handle)
{
    Block *block = Blocks().Find(handle);
    if (block == nullptr)
        return handle;
    free(block->bytes);
    Blocks().Remove(handle);
    return nullptr;
}

LPVOID WINAPI GlobalLock(HGLOBAL handle)
{
    Block *block = Blocks().Find(handle);
    if (block == nullptr || block->bytes == nullptr)
        return nullptr;
    block->locks++;
    return block->bytes;
}

BOOL WINAPI GlobalUnlock(HGLOBAL handle)
{
    Block *block = Blocks().Find(handle);
    if (block == nullptr || block->locks == 0)
        return FALSE;
    block->locks--;
    return block->locks > 0;
}

SIZE_T WINAPI GlobalSize(HGLOBAL handle)
{
    const Block *block = Blocks().Find(handle);
    return block == nullptr ? 0 : block->size;
}
