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

static int PieceWidth(const Font &font, std::string_view piece)
{
    return visible.measureText(font, piece.data(), static_cast<int>(piece.size()));
}

// Takes the piece that begins there, and moves on to the next one.
static TextPiece TakePiece(const Font &font, std::string_view line, size_t *at, int *x)
{
    const int tab = 8 * AverageWidth(font);
    const size_t end = std::min(line.find('\t', *at), line.size());
    const TextPiece piece = {*x, line.substr(*at, end - *at)};
    *x = (*x + PieceWidth(font, piece.text)) / tab * tab + tab;
    *at = end + 1;
    return piece;
}

std::vector<TextPiece> PlacePieces(const Font &font, std::string_view line)
{
    std::vector<TextPiece> pieces;
    int x = 0;
    for (size_t at = 0; at <= line.size();)
        pieces.push_back(TakePiece(font, line, &at, &x));
    return pieces;
}

int TextWidth(const Font &font, std::string_view line)
{
    TextPiece last = {};
    int x = 0;
    for (size_t at = 0; at <= line.size();)
        last = TakePiece(font, line, &at, &x);
    return last.x + PieceWidth(font, last.text);
}

// Appends the lines of one paragraph.
static void BreakParagraph(const Font &font, std::string_view paragraph, int width,
                           std::vector<std::string_view> *lines)
{
    size_t start = 0, end = 0; // of the line so far
    while (end < paragraph.size()) {
        const size_t wordEnd =
            std::min(paragraph.find(' ', paragraph.find_first_not_of(' ', end)), paragraph.size());
        if (end > start && TextWidth(font, paragraph.substr(start, wordEnd - start)) > width) {
            lines->push_back(paragraph.substr(start, end - start));
            start = end = std::min(paragraph.find_first_not_of(' ', end), paragraph.size());
        } else {
            end = wordEnd;
        }
    }
    lines->push_back(paragraph.substr(start, end - start));
}

std::vector<std::string_view> BreakLines(const Font &font, std::string_view text, int width)
{
    std::vector<std::string_view> lines;
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
