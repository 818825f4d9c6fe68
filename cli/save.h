// The command that saves what executables hold.
#pragma once

#include "cli/exit_status.h"
#include "platform/win32.h"

#include <cstdio>
#include <string>
#include <vector>

namespace CLI
{
class App;
}

struct SaveOptions {
    std::string output; // folder; empty: for each file its base name and ".resources"
    std::vector<DWORD> categories;
    bool all = false; // every kind, as the survey has it; then categories is empty
    bool force = false;
    bool salvage = false;
    bool utf8 = false;
    unsigned codePage =
        0; // with all or utf8: of what is not UTF-16, as in NE files; 0: the ANSI page
    std::vector<std::string> names; // of the resources to save; none: all
    std::vector<std::string> files;
};

// Adds the command and its options, which are stored in `options`.
CLI::App *AddSaveCommand(CLI::App &app, SaveOptions *options);

// Writes the entries asked for of each file to OUTPUT/LABEL/NAME.EXT, or with all its resources to
// OUTPUT/TYPE/NAME.EXT; of several files each has a folder of its own in OUTPUT. How many files
// went where goes to out; refusals, failures and, when it takes long and err is a terminal, its
// progress go to err. A file that is refused does not stop the others.
ExitStatus RunSave(const SaveOptions &options, FILE *out, FILE *err);
