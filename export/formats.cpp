#include "export/formats.h"

static constexpr ExportFormat formats[] = {
    {CategoryBitmap, 0, "%s.BMP", "BMP files\0*.BMP\0All files\0*.*\0", false, WriteBmpStream,
     WriteBmpFile},
    {CategoryIcon, 0, "%s.ICO", "Icon files\0*.ICO\0All files\0*.*\0", false, WriteIcoStream,
     WriteIcoFile},
    {CategoryString, 0, "%s.TXT", "Text files\0*.TXT\0All files\0*.*\0", true,
     WriteStringTableStream, WriteStringTableText},
    {CategoryBinary, 1, "%s.WAV", "WAVE files\0*.WAV\0All files\0*.*\0", false, WriteRawStream,
     WriteRawFile},
    {CategoryBinary, 0, "%s.BIN", "Binary files\0*.BIN\0All files\0*.*\0", false, WriteRawStream,
     WriteRawFile},
};
static_assert(CoversCategories(formats), "each category has a format");

const ExportFormat *FindExportFormat(const ResourceEntry *entry)
{
    for (const ExportFormat &format : formats)
        if (format.category == entry->category &&
            (entry->category != CategoryBinary || format.isWave == entry->isWave))
            return &format;
    return nullptr;
}
