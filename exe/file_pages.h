// An open file's bytes, read as they are asked for. What lies around them is kept in a few pages,
// so that records which stand near each other cost one reading, and of a large file no more is read
// than is wanted. Nothing is mapped: a file that becomes shorter gives failed reads.
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <cstdio>

#define FILE_PAGE_SIZE 2048
#define FILE_PAGE_COUNT 32

struct FilePage {
    uint64_t start; // offset of its first byte in the file
    size_t length;  // bytes that it holds; 0 for a page that was not read yet
    BYTE bytes[FILE_PAGE_SIZE];
};

struct FilePages {
    FILE *file;        // the caller's, whose position is not kept
    uint64_t length;   // bytes of the file when it was opened; 0 when that is not known
    bool isUnreadable; // bytes that lie in the file could not be read; who looks clears it
    FilePage pages[FILE_PAGE_COUNT];
};

// Starts reading a file, which stays the caller's and open for as long as the pages are used.
void OpenPages(FilePages *pages, FILE *file);

// Whether size bytes at an offset all lie in the file.
bool LiesInFile(const FilePages *pages, uint64_t offset, uint64_t size);

// Copies size bytes at an offset of the file. Returns false when they do not all lie in it, or
// cannot be read, which is noted (FailureUnreadable); a part may then have been copied. More than a
// page is read at once, past the pages.
bool ReadPages(FilePages *pages, uint64_t offset, void *bytes, size_t size);
