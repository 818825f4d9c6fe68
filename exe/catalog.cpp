#include "exe/catalog.h"

#include "content/block.h"
#include "platform/byte_reader.h"

#include <algorithm>

ResourceCatalog openCatalog;

unsigned long long KeptBytesLimit(unsigned long long fileLength)
{
    return std::max(64ull << 20, 2 * fileLength);
}

int AppendEntry(ResourceCatalog *catalog, const ResourceEntry *entry)
{
    ResourceEntry *records;
    if (catalog->entries == nullptr) {
        records = (ResourceEntry *)AllocateLocked(sizeof *records, &catalog->entries);
    } else {
        const SIZE_T bytes = ((SIZE_T)catalog->count + 1) * sizeof *records;
        HGLOBAL grown = GlobalReAlloc(catalog->entries, bytes, GMEM_MOVEABLE | GMEM_ZEROINIT);
        if (grown == nullptr)
            return 0;
        catalog->entries = grown;
        records = (ResourceEntry *)GlobalLock(grown);
    }
    if (records == nullptr)
        return 0;
    records[catalog->count] = *entry;
    catalog->count++;
    GlobalUnlock(catalog->entries);
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
    entry->isWave = entry->size >= WAVE_HEADER_SIZE && EqualLetters(data, "RIFF", 4) &&
                    EqualLetters(data + 8, "WAVE", 4);
    return entry->isWave;
}
