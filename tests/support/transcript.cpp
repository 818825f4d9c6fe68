#include "tests/support/transcript.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

using Lines = std::vector<std::string>;

static Lines LinesOf(std::istream &text)
{
    Lines lines;
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

Lines LinesOf(const std::string &path)
{
    std::ifstream file(path);
    return LinesOf(file);
}

void ExpectTold(const Lines &told, const std::string &expectedFile, const std::string &toldFile)
{
    std::stringstream all;
    for (const std::string &text : told)
        all << text << "\n";
    const Lines now = LinesOf(all), expected = LinesOf(expectedFile);
    if (now == expected)
        return;
    std::ofstream(toldFile, std::ios::binary) << all.str();
    const size_t shorter = std::min(now.size(), expected.size());
    size_t same = 0, end = 0;
    while (same < shorter && now[same] == expected[same])
        same++;
    while (end < shorter - same && now[now.size() - 1 - end] == expected[expected.size() - 1 - end])
        end++;
    std::string difference;
    for (size_t i = same; i < expected.size() - end; i++)
        difference += "- " + expected[i] + "\n";
    for (size_t i = same; i < now.size() - end; i++)
        difference += "+ " + now[i] + "\n";
    ADD_FAILURE() << expectedFile << ", after line " << same << ":\n" << difference;
}
