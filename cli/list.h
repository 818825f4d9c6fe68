// The command that prints what an executable holds.
#pragma once

#include "cli/exit_status.h"

#include <cstdio>
#include <string>
#include <vector>

namespace CLI
{
class App;
}

struct ListOptions {
    bool all = false;
    bool json = false;
    bool salvage = false;
    unsigned codePage = 0; // of what is not UTF-16, as in NE files; 0: the ANSI page
    std::vector<std::string> files;
};

// Adds the command and its options, which are stored in `options`.
CLI::App *AddListCommand(CLI::App &app, ListOptions *options);

// Prints each file's tree to out, or with all everything that it carries, or with json one object a
// line in the file's order. A file that is refused is told, on err in one line or among the
// objects, and does not stop the others.
ExitStatus RunList(const ListOptions &options, FILE *out, FILE *err);
