// Opening an executable for a command: reading it into the catalogue, and telling why not.
#pragma once

#include "platform/win32.h"

#include <cstdio>
#include <string>

// Reads the file into openCatalog, which is empty before, and into the tree, which may be NULL.
// Refusals go to err: every text that the window would show, in its order, and the reason. With
// salvage, what a damaged file gave is kept, and err says that the file is damaged. Returns 1 when
// there are entries to work on; on 0 the catalogue is empty.
int ReadExecutable(const std::string &path, HWND tree, int salvage, FILE *err);

// Prints "quillmoor-cli: PATH: TEXT" as one line.
void PrintFault(FILE *err, const std::string &path, const std::string &text);

// Prints that there is not enough memory, without asking for any.
void PrintNoMemory(FILE *err);

// A text of the ANSI code page as UTF-8.
std::string TextToUtf8(const char *text);
