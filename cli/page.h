// The command that writes one page of all that files carry, to read in a browser or on paper.
#pragma once

#include "cli/exit_status.h"

#include <cstdio>
#include <string>
#include <vector>

namespace CLI
{
class App;
}

struct PageOptions {
    std::string output; // "-" for out
    bool force = false;
    std::vector<std::string> files;
};

// Adds the command and its options, which are stored in `options`.
CLI::App *AddPageCommand(CLI::App &app, PageOptions *options);

// Writes a page of the files. A file that is refused is told on err and at the page's end, and does
// not stop the others; when all are, there is no page. So is a page that met its bound, and what of
// a file is damaged.
ExitStatus RunPage(const PageOptions &options, FILE *out, FILE *err);
