// A folder that the resources of one file are saved to: OUTPUT/LABEL/NAME.EXT. It and the folders
// in it are made when the first file is written; a file has its name only when it is whole. Set the
// fields up to `replaces` and the buffer, and the others to nothing.
#pragma once

#include "cli/exit_status.h"
#include "cli/file_names.h"
#include "export/writers.h"
#include "platform/files.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

// The files of one label.
struct LabelFolder {
    OutputFolder *folder;          // NULL when it cannot be used
    std::string unfinished;        // the name that a folder made by this run has until it is whole
    std::vector<std::string> made; // its files, while it has that name
    NamesInFolder names;
};

struct SaveFolder {
    FILE *err;          // where failures are told
    std::string source; // the file whose resources are saved, as messages name it
    std::string parent; // the folder that it lies in; empty: the current one
    std::string name;   // its name there
    bool isGiven;       // whether the user gave its path, which is its name then
    bool replaces;      // files that are there already
    OutputFolder *output;
    bool isUnusable;                           // it could not be made
    std::map<std::string, LabelFolder> labels; // that are not finished
    bool isLookedAt;                           // for what other runs left
    std::vector<char> buffer;                  // of the one file that is written; most fit whole
    size_t count;                              // files that have their names
    size_t inTheWay;                           // files that were there already
    std::string firstInTheWay;
    ExitStatus status;
    bool isDiskFull; // nothing more is written
};

// The folder's path, as messages name it.
std::string FolderPath(const SaveFolder *folder);

// Tells a failure of the run.
void FaultOf(SaveFolder *folder, const std::string &path, const std::string &text);

// Saves one file, which the writer fills: a name as it is to be encoded, and its extension. One
// whose name the file system takes for that of another gets the next one. What
// fails is told, and leaves no part of a file. Returns the file's path, as messages name it.
std::string SaveFile(SaveFolder *folder, const std::string &label, const std::string &name,
                     const std::string &extension,
                     const std::function<WriteOutcome(FILE *)> &writer);

// Gives what was made below a label its name, when no more of it comes: a file may have more labels
// than files can be open.
void FinishLabel(SaveFolder *folder, const std::string &label);

// Gives what was made its name, tells once of all the files that were in the way, and closes the
// folder. Returns the status of all that was done.
ExitStatus FinishSaveFolder(SaveFolder *folder);
