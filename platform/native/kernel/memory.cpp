// Movable memory blocks. Small ones lie on the C heap; large ones are mapped by themselves and ask
// for huge pages, because touching a file's worth of small pages one by one takes longer than
// reading the file.
#include "platform/native/handles.h"
#include "platform/win32/kernel.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sys/mman.h>

namespace
{

constexpr size_t hugePage = 2 << 20;
constexpr size_t mappedFrom = 2 * hugePage; // bytes

// Memory of one block: heap memory, or a part of a mapping.
struct Memory {
    char *bytes;     // nullptr only when the capacity is 0
    size_t capacity; // bytes there is room for
    void *mapping;   // nullptr for heap memory
};

struct Block {
    Memory memory;
    size_t size; // what the caller asked for; the memory past it holds anything
    unsigned locks;
};

HandleTable<Block, HandleKind::Memory> &Blocks()
{
    static HandleTable<Block, HandleKind::Memory> blocks;
    return blocks;
}

// Maps zeroed memory that begins on a huge page.
Memory MapMemory(size_t bytes)
{
    if (bytes > SIZE_MAX - hugePage)
        return {};
    void *mapping =
        mmap(nullptr, bytes + hugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapping == MAP_FAILED)
        return {};
    char *start = (char *)mapping + (hugePage - (uintptr_t)mapping % hugePage) % hugePage;
    madvise(start, bytes / hugePage * hugePage, MADV_HUGEPAGE);
    return {start, bytes, mapping};
}

Memory AllocateMemory(size_t bytes, bool zero)
{
    if (bytes >= mappedFrom)
        return MapMemory(bytes);
    char *memory = (char *)(zero ? calloc(1, bytes) : malloc(bytes));
    return {memory, memory == nullptr ? 0 : bytes, nullptr};
}

void ReleaseMemory(const Memory &memory)
{
    if (memory.mapping != nullptr)
        munmap(memory.mapping, memory.capacity + hugePage);
    else
        free(memory.bytes);
}

// Moves the block's bytes into room for `bytes` bytes.
bool Move(Block *block, size_t bytes)
{
    if (block->memory.mapping == nullptr && bytes < mappedFrom) {
        char *moved = (char *)realloc(block->memory.bytes, bytes);
        if (moved != nullptr)
            block->memory = {moved, bytes, nullptr};
        return moved != nullptr;
    }
    const Memory memory = AllocateMemory(bytes, false);
    if (memory.bytes == nullptr)
        return false;
    if (block->size > 0)
        memcpy(memory.bytes, block->memory.bytes, block->size);
    ReleaseMemory(block->memory);
    block->memory = memory;
    return true;
}

// Makes room for `bytes` bytes. Growth takes a half more than what there is, so that growing record
// by record copies each byte a bounded number of times.
bool Reserve(Block *block, size_t bytes)
{
    if (bytes <= block->memory.capacity)
        return true;
    const size_t spare = block->size / 2;
    if (spare < SIZE_MAX - block->size && Move(block, std::max(bytes, block->size + spare)))
        return true;
    return Move(block, bytes);
}

} // namespace

HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T bytes)
{
    if ((flags & GMEM_MOVEABLE) == 0)
        return nullptr;
    Memory memory = {};
    if (bytes > 0) {
        memory = AllocateMemory(bytes, (flags & GMEM_ZEROINIT) != 0);
        if (memory.bytes == nullptr)
            return nullptr;
    }
    HGLOBAL handle = Blocks().Add(Block{memory, bytes, 0});
    if (handle == nullptr)
        ReleaseMemory(memory);
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
        ReleaseMemory(block->memory);
        *block = {};
        return handle;
    }
    // A locked block stays where it is unless the caller allows the move.
    if (block->locks > 0 && (flags & GMEM_MOVEABLE) == 0 && bytes > block->memory.capacity)
        return nullptr;
    if (!Reserve(block, bytes))
        return nullptr;
    if (bytes > block->size && (flags & GMEM_ZEROINIT) != 0)
        memset(block->memory.bytes + block->size, 0, bytes - block->size);
    block->size = bytes;
    return handle;
}

HGLOBAL WINAPI GlobalFree(HGLOBAL handle)
{
    Block *block = Blocks().Find(handle);
    if (block == nullptr)
        return handle;
    ReleaseMemory(block->memory);
    Blocks().Remove(handle);
    return nullptr;
}

LPVOID WINAPI GlobalLock(HGLOBAL handle)
{
    Block *block = Blocks().Find(handle);
    if (block == nullptr || block->memory.bytes == nullptr)
        return nullptr;
    block->locks++;
    return block->memory.bytes;
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
