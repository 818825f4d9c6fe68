// The files of the folders that a command is given.
#pragma once

#include <functional>
#include <string>

struct FolderVisitor {
    std::function<void(const std::string &path)> takeFile;
    // A folder that cannot be read; FileErrorText (platform/files.h) says why.
    std::function<void(const std::string &path)> failFolder;
};

// Hands on the regular files under a folder and its folders, in each by the bytes of the names.
// Links in it are not followed. Stops early when the user wants to stop.
void VisitFiles(const std::string &folder, const FolderVisitor &visitor);
