// A folder for one test, which is empty at its start and gone at its end.
#pragma once

#include "samples/builder/bytes.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

struct TempFolder {
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder &) = delete;
    TempFolder &operator=(const TempFolder &) = delete;

    // The path of a file in the folder, as UTF-8.
    std::string Path(const std::string &name) const;

    // Writes a file there, with the folders on its way, and gives its path.
    std::string Write(const std::string &name, const Bytes &bytes) const;

    // The names of all files below the folder, relative, with "/" between their parts, sorted.
    std::vector<std::string> Files() const;

    std::filesystem::path path;
};

// A file's content; empty when there is none.
Bytes ReadFile(const std::filesystem::path &path);

// An open file with the given content, at its start; it is gone when it is closed.
FILE *OpenContent(const Bytes &bytes);

// From here on no file of this process grows past that many bytes; -1 lifts the limit. Returns 0,
// and limits nothing, where the system has no such limit.
int LimitFileSize(long bytes);
