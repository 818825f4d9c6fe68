// Text broken into lines.
#pragma once

#include <string>
#include <vector>

#include "platform/native/gdi/objects.h"

// Height of a line of the font, width of a text, in logical pixels; a guess with no display.
int LineHeight(const Font &font);
int TextWidth(const Font &font, const std::string &text);

// Mean width of the font's letters.
int AverageWidth(const Font &font);

// Breaks a text at its line feeds, and between words where a line would be wider than width. A
// word that is wider stays whole. Carriage returns are left out.
std::vector<std::string> BreakLines(const Font &font, const std::string &text, int width);

// A label as it is shown: "&" is left out and marks the next letter, "&&" is one "&".
std::string WithoutMnemonic(const std::string &label);
