#include "cli/folder_files.h"

#include "platform/console.h"
#include "platform/files.h"

#include <algorithm>

static std::string Join(std::string folder, const std::string &name)
{
    if (!folder.empty() && !IsSeparator(folder.c_str(), folder.size() - 1))
        folder += pathSeparator;
    return folder + name;
}

void VisitFiles(const std::string &folder, const FolderVisitor &visitor)
{
    std::vector<FolderEntry> waiting = {{folder, 1}}; // by their paths, the next one last
    std::vector<FolderEntry> items;
    while (!waiting.empty() && !StopRequested()) {
        const FolderEntry item = waiting.back();
        waiting.pop_back();
        if (!item.isFolder) {
            visitor.takeFile(item.name);
            continue;
        }
        if (!ListFolder(item.name.c_str(), &items)) {
            visitor.failFolder(item.name);
            continue;
        }
        std::sort(items.begin(), items.end(),
                  [](const FolderEntry &a, const FolderEntry &b) { return a.name > b.name; });
        for (const FolderEntry &inner : items)
            waiting.push_back({Join(item.name, inner.name), inner.isFolder});
    }
}
