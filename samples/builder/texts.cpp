#include "samples/builder/texts.h"

#define STRINGS_A_BLOCK 16

Bytes MakeStringBlock(const std::vector<std::u16string> &strings)
{
    Bytes block;
    for (const std::u16string &string : strings) {
        AddU16(block, (unsigned)string.size());
        for (char16_t unit : string)
            AddU16(block, unit);
    }
    for (size_t i = strings.size(); i < STRINGS_A_BLOCK; i++)
        AddU16(block, 0);
    return block;
}

Bytes MakeNeStringBlock(const std::vector<std::string> &strings)
{
    Bytes block;
    for (const std::string &string : strings) {
        AddU8(block, (unsigned)string.size());
        AddText(block, string);
    }
    for (size_t i = strings.size(); i < STRINGS_A_BLOCK; i++)
        AddU8(block, 0);
    return block;
}
