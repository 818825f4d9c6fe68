// Where the program, its settings and its temporary files are.
#pragma once

#include <string>
#include <vector>

// The value of an environment variable that has to be an absolute path; empty when it is none.
std::string AbsolutePath(const char *variable);

// The path of the running program, with links resolved; empty when the system does not tell.
std::string ProgramPath();

// The user's configuration folder, with no separator at its end; empty for a user without a home.
std::string UserConfigFolder();

// The system-wide configuration folders, the most important first.
std::vector<std::string> SystemConfigFolders();

// Whether something that the user may see has the path; links are followed.
bool PathExists(const std::string &path);
