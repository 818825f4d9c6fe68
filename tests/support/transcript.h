// Texts of what a program told, line by line, held against what it is to tell.
#pragma once

#include "samples/builder/bytes.h"

#include <string>
#include <vector>

// The lines of a text file; none when it is not there.
std::vector<std::string> LinesOf(const std::string &path);

// Expects that what was told, each of whose texts may have several lines, is what the file holds.
// What differs is printed from the first different line to the last; what was told is left in the
// other file, to be looked at and taken over.
void ExpectTold(const std::vector<std::string> &told, const std::string &expectedFile,
                const std::string &toldFile);

// A file's content: its size, a sum over it, and its first 80 letters or else 32 bytes.
std::string Described(const Bytes &bytes);
