// Finding and starting other programs.
#pragma once

#include <string>
#include <vector>

// The path of a program that the user may run: a path as it stands, a bare name from $PATH. Empty
// when there is none.
std::string FindProgram(const std::string &name);

// Starts a program that goes on by itself. Returns false when it could not be started.
bool StartProgram(const std::string &path, const std::vector<std::string> &arguments);

// Runs a program to its end and gives the first line that it prints, without the line end; empty on
// failure.
std::string AskProgram(const std::string &path, const std::vector<std::string> &arguments);
