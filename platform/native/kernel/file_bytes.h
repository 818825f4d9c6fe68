// A whole file in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

struct FreeBytes {
    void operator()(uint8_t *bytes) const
    {
        free(bytes);
    }
};
using FileBytes = std::unique_ptr<uint8_t[], FreeBytes>;

// Reads a regular file and stores how many bytes it has; one that shrinks meanwhile is as long as
// what could be read. Returns nothing, with *size 0, when it is none, cannot be opened or is empty.
FileBytes ReadWholeFile(const char *path, size_t *size);
