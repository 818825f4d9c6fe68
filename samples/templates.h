// Resources of the kinds that Quillmoor passes over, so that the samples are like real programs.
// `wide` means the form in PE files (UTF-16), else that in NE files (8-bit characters).
#pragma once

#include "samples/builder/bytes.h"

#include <string_view>

// A menu bar of one popup with one command.
Bytes MakeMenu(std::string_view popup, std::string_view command, unsigned id, bool wide);

// A dialog with a line of text and an OK button.
Bytes MakeDialog(std::string_view caption, std::string_view text, bool wide);

// The group of one cursor of 32 x 32 pixels, of `size` bytes.
Bytes MakeCursorGroup(size_t size, unsigned id);
