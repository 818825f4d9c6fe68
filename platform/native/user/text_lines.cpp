#include "platform/native/user/text_lines.h"

#include <algorithm>

#include "platform/native/visible.h"

static FontSize SizeOf(const Font &font)
{
    FontSize size;
    visible.measureFont(font, &size);
    return size;
}

int LineHeight(const Font &font)
{
    const FontSize size = SizeOf(font);
    return size.ascent + size.descent;
}

int AverageWidth(const Font &font)
{
    return SizeOf(font).averageWidth;
}

static int PieceWidth(const Font &font, const std::string &piece)
{
    return visible.measureText(font, piece.data(), static_cast<int>(piece.size()));
}

std::vector<TextPiece> PlacePieces(const Font &font, const std::string &line)
{
    const int tab = 8 * AverageWidth(font);
    std::vector<TextPiece> pieces;
    int x = 0;
    for (size_t at = 0; at <= line.size();) {
        const size_t end = std::min(line.find('\t', at), line.size());
        pieces.push_back({x, line.substr(at, end - at)});
        x = (x + PieceWidth(font, pieces.back().text)) / tab * tab + tab;
        at = end + 1;
    }
    return pieces;
}

int TextWidth(const Font &font, const std::string &line)
{
    const TextPiece last = PlacePieces(font, line).back();
    return last.x + PieceWidth(font, last.text);
}

// Appends the lines of one paragraph.
static void BreakParagraph(const Font &font, const std::string &paragraph, int width,
                           std::vector<std::string> *lines)
{
    std::string line;
    size_t at = 0;
    while (at < paragraph.size()) {
        const size_t wordEnd =
            std::min(paragraph.find(' ', paragraph.find_first_not_of(' ', at)), paragraph.size());
        const std::string longer = line + paragraph.substr(at, wordEnd - at);
        if (!line.empty() && TextWidth(font, longer) > width) {
            lines->push_back(line);
            line.clear();
            at = std::min(paragraph.find_first_not_of(' ', at), paragraph.size());
            continue;
        }
        line = longer;
        at = wordEnd;
    }
    lines->push_back(line);
}

std::vector<std::string> BreakLines(const Font &font, const std::string &text, int width)
{
    std::vector<std::string> lines;
    size_t at = 0;
    while (at <= text.size()) {
        const size_t end = std::min(text.find_first_of("\r\n", at), text.size());
        BreakParagraph(font, text.substr(at, end - at), width, &lines);
        at = end + 1;
        if (at < text.size() && text[at] != text[end] && (text[at] == '\r' || text[at] == '\n'))
            ++at;
    }
    return lines;
}

std::string WithoutMnemonic(const std::string &label)
{
    std::string shown;
    for (size_t i = 0; i < label.size(); ++i) {
        if (label[i] == '&' && i + 1 < label.size())
            ++i;
        shown += label[i];
    }
    return shown;
}
