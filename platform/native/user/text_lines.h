// Text broken into lines. Texts are in the ANSI code page; sizes and places are in logical pixels,
// as the display measures the font, or a guess with no display.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/native/gdi/objects.h"

// Height of a line of the font.
int LineHeight(const Font &font);

// Mean width of the font's letters.
int AverageWidth(const Font &font);

// A line's pieces between its tabs, which stand at every eighth mean width. There is at least one.
struct TextPiece {
    int x; // from the line's left end
    std::string_view text;
};
std::vector<TextPiece> PlacePieces(const Font &font, std::string_view line);

// Width of a line with its tabs.
int TextWidth(const Font &font, std::string_view line);

// Breaks a text at its line ends (either character, or both as one), and between words where a line
// would be wider than width. A word that is wider stays whole. There is at least one line; all are
// parts of the text.
std::vector<std::string_view> BreakLines(const Font &font, std::string_view text, int width);

// A label as it is shown: "&" is left out and marks the next letter, "&&" is one "&".
std::string WithoutMnemonic(const std::string &label);
