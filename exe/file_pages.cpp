#include "exe/file_pages.h"

#include "exe/refusal.h"
#include "platform/files.h"

#include <algorithm>
#include <cstring>

void OpenPages(FilePages *pages, FILE *file)
{
    const int64_t length = FileLength(file);
    pages->file = file;
    pages->length = length < 0 ? 0 : (uint64_t)length;
    pages->isUnreadable = false;
    for (FilePage &page : pages->pages)
        page.length = 0;
}

bool LiesInFile(const FilePages *pages, uint64_t offset, uint64_t size)
{
    return size <= pages->length && offset <= pages->length - size;
}

static bool ReadAt(FilePages *pages, uint64_t offset, void *bytes, size_t size)
{
    if (SeekTo(pages->file, offset) && fread(bytes, 1, size, pages->file) == size)
        return true;
    NoteFailure(FailureUnreadable);
    pages->isUnreadable = true;
    return false;
}

// The page that holds an offset, which lies in the file; NULL when it cannot be read.
static const FilePage *PageOf(FilePages *pages, uint64_t offset)
{
    const uint64_t number = offset / FILE_PAGE_SIZE;
    FilePage *page = &pages->pages[number % FILE_PAGE_COUNT];
    const uint64_t start = number * FILE_PAGE_SIZE;
    if (page->length > 0 && page->start == start)
        return page;
    page->start = start;
    page->length = (size_t)std::min<uint64_t>(FILE_PAGE_SIZE, pages->length - start);
    if (!ReadAt(pages, start, page->bytes, page->length))
        page->length = 0;
    return page->length > 0 ? page : nullptr;
}

bool ReadPages(FilePages *pages, uint64_t offset, void *bytes, size_t size)
{
    if (!LiesInFile(pages, offset, size))
        return false;
    if (size > FILE_PAGE_SIZE)
        return ReadAt(pages, offset, bytes, size);
    BYTE *to = (BYTE *)bytes;
    while (size > 0) {
        const FilePage *page = PageOf(pages, offset);
        if (page == nullptr)
            return false;
        const size_t at = (size_t)(offset - page->start);
        const size_t count = std::min(size, page->length - at);
        memcpy(to, page->bytes + at, count);
        to += count;
        offset += count;
        size -= count;
    }
    return true;
}
