#include "tests/support/transcript.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
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

std::string Described(const Bytes &bytes)
{
    uint32_t sum = 2166136261u;
    std::string text;
    for (const unsigned char value : bytes)
        sum = (sum ^ value) * 16777619u;
    const bool isText = std::all_of(bytes.begin(), bytes.end(), [](unsigned char c) {
        return (c >= ' ' && c < 127) || c == '\t' || c == '\r' || c == '\n' || c > 160;
    });
    for (size_t i = 0; i < std::min<size_t>(bytes.size(), isText ? 80 : 32); i++) {
        char number[8];
        snprintf(number, sizeof number, isText ? "\\x%02X" : " %02X", (unsigned)bytes[i]);
        text +=
            isText && bytes[i] >= ' ' && bytes[i] < 127 ? std::string(1, (char)bytes[i]) : number;
    }
    char line[400];
    snprintf(line, sizeof line, "%zu bytes, sum %08X:%s%s", bytes.size(), (unsigned)sum,
             isText && !bytes.empty() ? " " : "", text.c_str());
    return line;
}
