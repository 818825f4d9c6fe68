// The command that prints the texts of string tables and message tables.
#pragma once

#include "cli/exit_status.h"

#include <cstdio>
#include <string>
#include <vector>

namespace CLI
{
class App;
}

struct StringsOptions {
    bool json = false;
    std::string language;  // a tag, or Windows' number in decimal; empty for each language
    unsigned codePage = 0; // of texts that are not UTF-16; 0: the ANSI page
    std::vector<std::string> files;
};

// Adds the command and its options, which are stored in `options`.
CLI::App *AddStringsCommand(CLI::App &app, StringsOptions *options);

// Prints each file's texts to out, a line each: identifier, language and text between tabs, or with
// json an object. What can be read of a damaged file or block is printed, and the damage told on
// err. A file that is refused does not stop the others.
ExitStatus RunStrings(const StringsOptions &options, FILE *out, FILE *err);
