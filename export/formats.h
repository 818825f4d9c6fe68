// The formats that entries are saved in, and which of them suits which entry.
#pragma once

#include "exe/catalog.h"
#include "exe/categories.h"
#include "export/writers.h"

#include <cstdio>

struct ExportFormat {
    ResourceCategory category;
    LONG isWave;             // looked at for binary data only
    const char *defaultName; // "%s.BMP": %s is the entry's name
    const char *filters;     // pairs of description and pattern, each terminated; "" ends the list
    bool asksDataFirst;      // writeFile creates no file when the data is not available
    WriteOutcome (*writeStream)(FILE *stream, const ResourceEntry *entry);
    WriteOutcome (*writeFile)(const char *name, const ResourceEntry *entry);
};

// The entry's format, or NULL when its category has none.
const ExportFormat *FindExportFormat(const ResourceEntry *entry);
