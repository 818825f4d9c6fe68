// Movable memory blocks. Large ones are mapped by themselves, small ones share a mapping with their
// neighbours in time; mappings ask for huge pages, because touching a file's worth of small pages
// one by one takes longer than reading the file. Blocks that grow lie on the C heap.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <sys/mman.h>

#include "platform/native/handles.h"
#include "platform/win32/kernel.h"

constexpr size_t page = 4 << 10;
constexpr size_t hugePage = 2 << 20;
constexpr size_t mappedFrom = 2 * hugePage; // bytes
#ifdef __SANITIZE_ADDRESS__
constexpr size_t pooledBelow = 0; // blocks of their own, so that reads past their ends are seen
#else
constexpr size_t pooledBelow = 128 << 10; // bytes
#endif
constexpr size_t poolSize = 2 * hugePage;
constexpr size_t poolAlignment = 16;

namespace
{

// A mapping for small blocks, which are placed one after another; a place is used again only when
// all of them are gone.
struct Pool {
    void *mapping;
    char *next;
    size_t left; // bytes
    size_t live; // blocks
};

// Memory of one block: heap memory, a mapping of its own, or a part of a pool.
struct Memory {
    char *bytes;     // nullptr only when the capacity is 0
    size_t capacity; // bytes there is room for
    void *mapping;   // its own, or nullptr
    Pool *pool;      // or nullptr
};

struct Block {
    Memory memory;
    size_t size; // what the caller asked for; the memory past it holds anything
    unsigned locks;
};

} // namespace

static Pool *openPool; // the one that takes new blocks

static HandleTable<Block, HandleKind::Memory> &Blocks()
{
    static HandleTable<Block, HandleKind::Memory> blocks;
    return blocks;
}

// Maps zeroed memory that begins on a huge page.
static Memory MapMemory(size_t bytes)
{
    if (bytes > SIZE_MAX - hugePage)
        return {};
    void *mapping =
        mmap(nullptr, bytes + hugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapping == MAP_FAILED)
        return {};
    char *start = static_cast<char *>(mapping) +
                  (hugePage - reinterpret_cast<uintptr_t>(mapping) % hugePage) % hugePage;
    // All of it alike: what is advised differently in parts cannot be remapped.
    madvise(mapping, bytes + hugePage, MADV_HUGEPAGE);
    return {start, bytes, mapping, nullptr};
}

static void LeavePool(Pool *pool)
{
    if (--pool->live > 0) {
        // The open pool, empty again, starts anew with zeroed memory.
        if (pool->live == 1 && pool == openPool) {
            const size_t used = poolSize - pool->left;
            pool->next -= used;
            pool->left = poolSize;
            memset(pool->next, 0, used);
        }
        return;
    }
    munmap(pool->mapping, poolSize + hugePage);
    delete pool;
}

// Takes zeroed memory from the open pool, or from a new one.
static Memory TakeFromPool(size_t bytes)
{
    const size_t taken = (bytes + poolAlignment - 1) / poolAlignment * poolAlignment;
    if (!openPool || openPool->left < taken) {
        const Memory memory = MapMemory(poolSize);
        if (!memory.bytes)
            return {};
        // Being open counts as one block.
        Pool *pool = new (std::nothrow) Pool{memory.mapping, memory.bytes, poolSize, 1};
        if (!pool) {
            munmap(memory.mapping, poolSize + hugePage);
            return {};
        }
        if (openPool)
            LeavePool(openPool);
        openPool = pool;
    }
    char *place = openPool->next;
    openPool->next += taken;
    openPool->left -= taken;
    ++openPool->live;
    return {place, bytes, nullptr, openPool};
}

static Memory AllocateMemory(size_t bytes, bool zero)
{
    if (bytes >= mappedFrom)
        return MapMemory(bytes);
    if (bytes < pooledBelow)
        return TakeFromPool(bytes);
    char *memory = static_cast<char *>(zero ? calloc(1, bytes) : malloc(bytes));
    return {memory, memory ? bytes : 0, nullptr, nullptr};
}

static void ReleaseMemory(const Memory &memory)
{
    if (memory.pool)
        LeavePool(memory.pool);
    else if (memory.mapping)
        munmap(memory.mapping, memory.capacity + hugePage);
    else
        free(memory.bytes);
}

// Gives a mapping another length; its bytes are moved as pages, not copied.
static bool Remap(Memory *memory, size_t bytes)
{
    if (bytes > SIZE_MAX - hugePage)
        return false;
    char *before = static_cast<char *>(memory->mapping);
    void *mapping = mremap(before, memory->capacity + hugePage, bytes + hugePage, MREMAP_MAYMOVE);
    if (mapping == MAP_FAILED)
        return false;
    *memory = {static_cast<char *>(mapping) + (memory->bytes - before), bytes, mapping, nullptr};
    return true;
}

// Moves the block's bytes into room for `bytes` bytes, on the heap or in a mapping of their own.
static bool Move(Block *block, size_t bytes)
{
    Memory &old = block->memory;
    if (!old.mapping && !old.pool && bytes < mappedFrom) {
        char *moved = static_cast<char *>(realloc(old.bytes, bytes));
        if (moved)
            old = {moved, bytes, nullptr, nullptr};
        return moved;
    }
    if (old.mapping && bytes >= mappedFrom)
        return Remap(&old, bytes);
    Memory memory = {};
    if (bytes >= mappedFrom)
        memory = MapMemory(bytes);
    else
        memory = {static_cast<char *>(malloc(bytes)), bytes, nullptr, nullptr};
    if (!memory.bytes)
        return false;
    if (block->size > 0)
        memcpy(memory.bytes, old.bytes, block->size);
    ReleaseMemory(old);
    old = memory;
    return true;
}

// Makes room for `bytes` bytes. Growth takes a half more than what there is, so that growing record
// by record copies each byte a bounded number of times; where there is no such room, the next
// page's end.
static bool Reserve(Block *block, size_t bytes)
{
    if (bytes <= block->memory.capacity)
        return true;
    const size_t spare = block->size / 2;
    if (spare < SIZE_MAX - block->size && Move(block, std::max(bytes, block->size + spare)))
        return true;
    if (bytes > SIZE_MAX - page)
        return false;
    return Move(block, (bytes + page - 1) / page * page);
}

HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T bytes)
{
    if ((flags & GMEM_MOVEABLE) == 0)
        return nullptr;
    Memory memory = {};
    if (bytes > 0) {
        memory = AllocateMemory(bytes, (flags & GMEM_ZEROINIT) != 0);
        if (!memory.bytes)
            return nullptr;
    }
    HGLOBAL handle = Blocks().Add(Block{memory, bytes, 0});
    if (!handle)
        ReleaseMemory(memory);
    return handle;
}

HGLOBAL WINAPI GlobalReAlloc(HGLOBAL handle, SIZE_T bytes, UINT flags)
{
    Block *block = Blocks().Find(handle);
    if (!block)
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
    if (!block)
        return handle;
    ReleaseMemory(block->memory);
    Blocks().Remove(handle);
    return nullptr;
}

LPVOID WINAPI GlobalLock(HGLOBAL handle)
{
    Block *block = Blocks().Find(handle);
    if (!block || !block->memory.bytes)
        return nullptr;
    ++block->locks;
    return block->memory.bytes;
}

BOOL WINAPI GlobalUnlock(HGLOBAL handle)
{
    Block *block = Blocks().Find(handle);
    if (!block || block->locks == 0)
        return FALSE;
    --block->locks;
    return block->locks > 0;
}

SIZE_T WINAPI GlobalSize(HGLOBAL handle)
{
    const Block *block = Blocks().Find(handle);
    return block ? block->size : 0;
}
