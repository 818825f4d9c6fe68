#include "samples/builder/texts.h"

#include <functional>

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

void AddEndedText(Bytes &bytes, std::string_view text, bool wide)
{
    for (char letter : text) {
        if (wide)
            AddU16(bytes, (unsigned char)letter);
        else
            AddU8(bytes, (unsigned char)letter);
    }
    if (wide)
        AddU16(bytes, 0);
    else
        AddU8(bytes, 0);
}

// A node of a version record: length, length of the value, kind, key, value, children. The wide
// form says whether the value is text, and counts a text in characters.
static void AddVersionNode(Bytes &record, std::string_view key, bool wide, const Bytes &value,
                           unsigned valueLength, bool isText,
                           const std::function<void(Bytes &)> &addChildren = {})
{
    PadTo(record, 4);
    size_t start = record.size();
    AddU16(record, 0);
    AddU16(record, valueLength);
    if (wide)
        AddU16(record, isText);
    AddEndedText(record, key, wide);
    PadTo(record, 4);
    AddBytes(record, value);
    if (addChildren)
        addChildren(record);
    PutU16(record, start, (unsigned)(record.size() - start));
}

static void AddVersionText(Bytes &record, std::string_view key, std::string_view text, bool wide)
{
    Bytes value;
    AddEndedText(value, text, wide);
    AddVersionNode(record, key, wide, value, (unsigned)text.size() + 1, true);
}

Bytes MakeVersion(std::string_view fileName, std::string_view description, bool wide)
{
    Bytes fixed;
    for (uint32_t value : {0xfeef04bdu, 0x10000u, 0x10000u, 0u, 0x10000u, 0u, 0x3fu, 0u,
                           wide ? 0x40004u : 0x1u, 2u, 0u, 0u, 0u})
        AddU32(fixed, value);
    Bytes translation;
    AddU16(translation, 0x409);
    AddU16(translation, wide ? 1200 : 1252);
    Bytes record;
    auto addTexts = [&](Bytes &out) {
        AddVersionText(out, "FileDescription", description, wide);
        AddVersionText(out, "FileVersion", "1.0", wide);
        AddVersionText(out, "OriginalFilename", fileName, wide);
    };
    AddVersionNode(record, "VS_VERSION_INFO", wide, fixed, 52, false, [&](Bytes &out) {
        AddVersionNode(out, "StringFileInfo", wide, {}, 0, true, [&](Bytes &info) {
            AddVersionNode(info, wide ? "040904b0" : "040904e4", wide, {}, 0, true, addTexts);
        });
        AddVersionNode(out, "VarFileInfo", wide, {}, 0, true, [&](Bytes &info) {
            AddVersionNode(info, "Translation", wide, translation, 4, false);
        });
    });
    return record;
}
