// The command line of quillmoor-cli, from its arguments to its exit status.
#pragma once

#include "cli/exit_status.h"

#include <cstdio>
#include <string>
#include <vector>

// Runs the command that the arguments (UTF-8, without the program's name) give, writing to the
// two streams. Throws nothing.
ExitStatus RunCommandLine(const std::vector<std::string> &arguments, FILE *out, FILE *err);
