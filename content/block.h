// Movable memory blocks, which hold the catalogue's records, the resources' data and pictures.
#pragma once

#include "platform/win32.h"

// Makes a block of size bytes, zero-filled, and locks it. One byte is allocated when size is 0, so
// that every block can be locked: what a block holds is never told by the allocation's size. Stores
// the block, which the caller unlocks and frees, and returns the address of its bytes. When there
// is no memory both are NULL.
void *AllocateLocked(SIZE_T size, HGLOBAL *block);
