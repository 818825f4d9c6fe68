#include "viewer/graphic_file.h"

#include "platform/byte_reader.h"
#include "platform/codec/codec.h"
#include "platform/files.h"

#include <cstring>

const GraphicFormat graphicFormats[] = {
    {PNGGetFileInformation, PNGReadGraphicFile, PNGWriteGraphicFile, "png"},
};

int FindGraphicFormat(const char *name)
{
    const char *extension = PathExtension(name);
    if (*extension == 0)
        return -1;
    extension++;
    const int count = sizeof graphicFormats / sizeof *graphicFormats;
    for (int i = 0; i < count; i++)
        if (strlen(extension) == strlen(graphicFormats[i].extension) &&
            EqualLetters(extension, graphicFormats[i].extension, strlen(extension)))
            return i;
    return -1;
}

HGLOBAL ReadGraphicFile(const char *name)
{
    const int format = FindGraphicFormat(name);
    return format < 0 ? nullptr : graphicFormats[format].read(name);
}
