// Where the program and its settings are.
#pragma once

#include <string>
#include <vector>

// The path of the running program, with links resolved; empty when the system does not tell.
std::string ProgramPath();

// The user's configuration folder, with no separator at its end; empty for a user without a home.
std::string UserConfigFolder();

// The system-wide configuration folders, the most important first.
std::vector<std::string> SystemConfigFolders();

// Whether something that the user may see has the path; links are followed.
bool PathExists(const std::string &path);
