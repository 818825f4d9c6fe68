// Which file format suits which entry.
#pragma once

#include "export/writers.h"

struct ExportFormat {
    ResourceCategory category;
    LONG isWave;             // looked at for binary data only
    const char *defaultName; // "%s.BMP": %s is the entry's name
    const char *filters;     // pairs of description and pattern, each terminated; "" ends the list
    int asksDataFirst;       // 1: writeFile creates no file when the data is not available
    WriteOutcome (*writeStream)(FILE *stream, const ResourceEntry *entry);
    WriteOutcome (*writeFile)(const char *name, const ResourceEntry *entry);
};

// The entry's format, or NULL when its category has none.
const ExportFormat *FindExportFormat(const ResourceEntry *entry);
