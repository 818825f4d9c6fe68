#include "content/block.h"

void *AllocateLocked(SIZE_T size, HGLOBAL *block)
{
    *block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size == 0 ? 1 : size);
    if (*block == nullptr)
        return nullptr;
    void *bytes = GlobalLock(*block);
    if (bytes == nullptr) {
        GlobalFree(*block);
        *block = nullptr;
    }
    return bytes;
}
