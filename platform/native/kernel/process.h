// Finding and starting other programs.
#pragma once

#include <string>
#include <vector>

// The path of a program that the user may run: a path as it stands, a bare name from $PATH. Empty
// when there is none.
std::string FindProgram(const std::string &name);

// Starts a program, by its path, that goes on by itself; the arguments come after its name. Returns
// false when it could not be started.
bool StartProgram(const std::string &path, const std::vector<std::string> &arguments);

// Runs a program, by its path, to its end and gives the first line that it prints, without the line
// end; empty when it could not be started or ended with another status than 0.
std::string AskProgram(const std::string &path, const std::vector<std::string> &arguments);
