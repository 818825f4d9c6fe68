// Files that have their names only when they are whole: the steps that make one, and what kept them
// from it in words.
#pragma once

#include "export/writers.h"
#include "platform/files.h"

#include <functional>
#include <string>
#include <vector>

enum FileOutcome {
    FileDone,
    FileInTheWay, // one that is not to be replaced has the name
    FileNoMemory,
    FileFailed,
};

struct FileResult {
    FileOutcome outcome;
    std::string reason = ""; // why it failed, a sentence for people; empty for the other outcomes
    bool isDiskFull = false;
};

// Fills and closes a file that was just created in a folder under a name; NULL when it could not
// be. Unless it returns FileDone nothing has that name. buffer is the stream's, and may be NULL.
FileResult FillFile(const OutputFolder *folder, FILE *stream, const std::string &name,
                    const std::function<WriteOutcome(FILE *)> &writer, std::vector<char> *buffer);

// Gives a whole file of one folder its name in another. One that cannot have it is deleted.
FileResult PutInPlace(const OutputFolder *from, const std::string &oldName, const OutputFolder *to,
                      const std::string &name, bool replace);

// Both for a file of one folder, which is filled beside the one that it is to be.
FileResult MakeFile(const OutputFolder *folder, const std::string &name,
                    const std::function<WriteOutcome(FILE *)> &writer, std::vector<char> *buffer,
                    bool replace);

// What is told of a file that is in the way and could be replaced.
inline constexpr char inTheWayText[] = "The file is there already; --force replaces it.";

// Opens the folder that a file is to be written in, by the file's path, for as long as it is used
// with the file's name. Returns an empty text, or why it cannot be used, a sentence for people.
std::string
UseFolderOf(const std::string &path,
            const std::function<void(const OutputFolder *folder, const std::string &name)> &use);
