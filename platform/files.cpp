#include "platform/files.h"

#include <cstring>

const char *PathExtension(const char *path)
{
    const char *name = path + FolderLength(path);
    const char *dot = strrchr(name, '.');
    return dot == nullptr ? name + strlen(name) : dot;
}

FILE *CreateUnfinishedFile(const OutputFolder *folder, std::string *name)
{
    // Another program may take a name between the look and the creation; then the next is tried.
    for (int number = 1; number < 1000; number++) {
        *name = ".unfinished-" + std::to_string(number);
        if (ExistsInFolder(folder, name->c_str()))
            continue;
        FILE *file = CreateNewFile(folder, name->c_str());
        if (file != nullptr || !ExistsInFolder(folder, name->c_str()))
            return file;
    }
    return nullptr;
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
