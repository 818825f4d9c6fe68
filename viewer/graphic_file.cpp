#include "viewer/graphic_file.h"

#include "platform/byte_reader.h"
#include "platform/codec/codec.h"
#include "platform/files.h"

#include <cstring>

struct GraphicFormat {
    HGLOBAL (*read)(const char *name);
    const char *extension;
};

static const GraphicFormat formats[] = {
    {PNGReadGraphicFile, "png"},
};

int FindGraphicFormat(const char *name)
{
    const char *extension = PathExtension(name);
    if (*extension == 0)
        return -1;
    extension++;
    const int count = sizeof formats / sizeof *formats;
    for (int i = 0; i < count; i++)
        if (strlen(extension) == strlen(formats[i].extension) &&
            EqualLetters(extension, formats[i].extension, strlen(extension)))
            return i;
    return -1;
}

HGLOBAL ReadGraphicFile(const char *name)
{
    const int format = FindGraphicFormat(name);
    return format < 0 ? nullptr : formats[format].read(name);
}
