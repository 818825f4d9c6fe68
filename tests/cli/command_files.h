// The files that the commands of commands.txt are given, written into the folder.
#pragma once

#include "tests/support/temp_folder.h"

void WriteCommandFiles(const TempFolder &folder);
