// Numbers that options of the command line take.
#pragma once

#include "platform/win32.h"

#include <string>

namespace CLI
{
class App;
}

// Stores the number that a word is whole, decimal or with 0x hexadecimal, at most limit. Returns
// false when it is none.
bool ReadNumber(const std::string &word, unsigned limit, unsigned *number);

// Adds --code-page to a command, which stores the number of a page that is known
// (platform/page_text.h).
void AddCodePageOption(CLI::App *command, const char *description, UINT *codePage);
