#include "exe/catalog.h"

#include "content/byte_reader.h"

#include <algorithm>

ResourceCatalog openCatalog;

HGLOBAL AllocateData(DWORD size)
{
    return GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size == 0 ? 1 : size);
}

unsigned long long KeptBytesLimit(unsigned long long fileLength)
{
    return std::max(512ull << 20, 4 * fileLength);
}

int AppendEntry(ResourceCatalog *catalog, const ResourceEntry *entry)
{
    const SIZE_T bytes = ((SIZE_T)catalog->count + 1) * sizeof(ResourceEntry);
    HGLOBAL entries = catalog->entries == nullptr
                          ? GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes)
                          : GlobalReAlloc(catalog->entries, bytes, GMEM_MOVEABLE | GMEM_ZEROINIT);
    if (entries == nullptr)
        return 0;
    ResourceEntry *records = (ResourceEntry *)GlobalLock(entries);
    if (records == nullptr) {
        // A block that is new with this call would break the rule that an empty catalogue has none.
        if (catalog->entries == nullptr)
            GlobalFree(entries);
        else
            catalog->entries = entries;
        return 0;
    }
    catalog->entries = entries;
    records[catalog->count] = *entry;
    catalog->count++;
    GlobalUnlock(entries);
    return 1;
}

int GetEntry(HGLOBAL entries, ResourceEntry *entry, LONG index)
{
    const ResourceEntry *records = (const ResourceEntry *)GlobalLock(entries);
    if (records == nullptr)
        return 0;
    *entry = records[index];
    GlobalUnlock(entries);
    return 1;
}

void ReleaseCatalog(ResourceCatalog *catalog)
{
    if (catalog->entries == nullptr)
        return;
    ResourceEntry entry;
    for (LONG index = 0; index < catalog->count; index++)
        if (GetEntry(catalog->entries, &entry, index))
            GlobalFree(entry.data);
    GlobalFree(catalog->entries);
    catalog->entries = nullptr;
    catalog->count = 0;
}

LONG ProbeWave(ResourceEntry *entry, const BYTE *data)
{
    entry->isWave =
        entry->size >= 12 && EqualLetters(data, "RIFF", 4) && EqualLetters(data + 8, "WAVE", 4);
    return entry->isWave;
}
