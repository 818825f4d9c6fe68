// The command that saves what an executable holds.
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
    std::string output; // folder; empty: the file's base name and ".resources"
    std::vector<DWORD> categories;
    bool force = false;
    bool salvage = false;
    std::string file;
    std::vector<std::string> names; // resource names; none: all
};

// Adds the command and its options, which are stored in `options`.
CLI::App *AddSaveCommand(CLI::App &app, SaveOptions *options);

// Writes the entries asked for to OUTPUT/LABEL/NAME.EXT. Refusals, failures and, when it takes
// long and err is a terminal, its progress go to err.
ExitStatus RunSave(const SaveOptions &options, FILE *err);
