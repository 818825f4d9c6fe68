#include "platform/files.h"

#include <cstring>

const char *PathExtension(const char *path)
{
    const char *name = path + FolderLength(path);
    const char *dot = strrchr(name, '.');
    return dot == nullptr ? name + strlen(name) : dot;
}

int EndWithSeparator(char *folder, size_t size)
{
    const size_t length = strlen(folder);
    if (length == 0 || IsSeparator(folder, length - 1))
        return 1;
    if (length + 2 > size)
        return 0;
    folder[length] = pathSeparator;
    folder[length + 1] = 0;
    return 1;
}
