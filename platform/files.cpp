#include "platform/files.h"

#include <climits>
#include <cstring>

const char *PathExtension(const char *path)
{
    const char *name = path + FolderLength(path);
    const char *dot = strrchr(name, '.');
    return dot ? dot : name + strlen(name);
}

// Tries the unfinished names one after another until make(name) gives something, or fails for
// another reason than that the name is taken. Those that other runs left do not stop it.
template <typename Make>
static auto MakeUnfinished(const OutputFolder *folder, std::string *name, Make make)
{
    for (int number = 1;; ++number) {
        *name = ".unfinished-" + std::to_string(number);
        const auto made = make(folder, name->c_str());
        if (made || !NameWasTaken() || number == INT_MAX)
            return made;
    }
}

FILE *CreateUnfinishedFile(const OutputFolder *folder, std::string *name)
{
    return MakeUnfinished(folder, name, CreateNewFile);
}

OutputFolder *MakeUnfinishedFolder(const OutputFolder *folder, std::string *name)
{
    return MakeUnfinished(folder, name, MakeSubfolder);
}

bool EndWithSeparator(char *folder, size_t size)
{
    const size_t length = strlen(folder);
    if (length == 0 || IsSeparator(folder, length - 1))
        return true;
    if (length + 2 > size)
        return false;
    folder[length] = pathSeparator;
    folder[length + 1] = 0;
    return true;
}
