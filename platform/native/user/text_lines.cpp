#include "platform/native/user/text_lines.h"

#include "platform/native/visible.h"

static FontSize SizeOf(const Font &font)
{
    FontSize size = {11, 2, 6};
    if (visible.measureFont)
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

int TextWidth(const Font &font, const std::string &text)
{
    const int length = static_cast<int>(text.size());
    return visible.measureText ? visible.measureText(font, text.data(), length)
                               : length * SizeOf(font).averageWidth;
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
        const size_t end = std::min(text.find('\n', at), text.size());
        std::string paragraph = text.substr(at, end - at);
        std::erase(paragraph, '\r');
        BreakParagraph(font, paragraph, width, &lines);
        at = end + 1;
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
