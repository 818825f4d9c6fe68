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
    bool json = false;
    bool salvage = false;
    std::vector<std::string> files;
};

// Adds the command and its options, which are stored in `options`.
CLI::App *AddListCommand(CLI::App &app, ListOptions *options);

// Prints each file's tree to out, or with json one object a line in catalogue order. A file that
// is refused is told on err and does not stop the others.
ExitStatus RunList(const ListOptions &options, FILE *out, FILE *err);
