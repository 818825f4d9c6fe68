// Text broken into lines.
#pragma once

#include <string>
#include <vector>

#include "platform/native/gdi/objects.h"

// Height of a line of the font, width of a text, in logical pixels; a guess with no display.
int LineHeight(const Font &font);
int TextWidth(const Font &font, const std::string &text);

// A line's pieces between its tabs, which stand at every eighth mean width.
struct TextPiece {
    int x;
    std::string text;
};
std::vector<TextPiece> PlacePieces(const Font &font, const std::string &line);

// Mean width of the font's letters.
int AverageWidth(const Font &font);

// Breaks a text at its line ends (either character, or both as one), and between words where a line
// would be wider than width. A word that is wider stays whole.
std::vector<std::string> BreakLines(const Font &font, const std::string &text, int width);

// A label as it is shown: "&" is left out and marks the next letter, "&&" is one "&".
std::string WithoutMnemonic(const std::string &label);
