// The command that gives the icon of a program, for scripts and for the desktop's file manager.
#pragma once

#include "cli/exit_status.h"

#include <cstdio>
#include <string>

namespace CLI
{
class App;
}

struct IconOptions {
    std::string file;
    std::string output; // "" for the file's name with the format's extension, "-" for out
    int size = 0;       // pixels; 0: all pictures, as an icon file
    bool force = false;
};

// Adds the command and its options, which are stored in `options`.
CLI::App *AddIconCommand(CLI::App &app, IconOptions *options);

// Writes the icon that the desktop shows for the file: its first group of icons, those with names
// before those with numbers. As an icon file it has all pictures; with a size, the smallest one
// that is at least that large, else the largest, is a PNG file, made smaller where it is larger.
// What keeps it from that, and damage elsewhere in the file, is told on err.
ExitStatus RunIcon(const IconOptions &options, FILE *out, FILE *err);
