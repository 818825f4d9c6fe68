#include "samples/templates.h"

#include <functional>

static void AddString(Bytes &bytes, std::string_view text, bool wide)
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

Bytes MakeMenu(std::string_view popup, std::string_view command, unsigned id, bool wide)
{
    Bytes menu;
    AddU32(menu, 0);    // version 0, nothing more in the header
    AddU16(menu, 0x90); // a popup, the last of the bar
    AddString(menu, popup, wide);
    AddU16(menu, 0x80); // a command, the last of the popup
    AddU16(menu, id);
    AddString(menu, command, wide);
    return menu;
}

// Counts and control classes are a byte in the 8-bit form and in the wide one start a word.
struct ControlPlan {
    uint32_t style;
    unsigned id;
    unsigned kind; // 0x80 button, 0x82 static
    unsigned left, top, width, height;
    std::string_view text;
};

static void AddControl(Bytes &dialog, const ControlPlan &control, bool wide)
{
    if (wide) {
        PadTo(dialog, 4);
        AddU32(dialog, control.style);
        AddU32(dialog, 0);
    }
    for (unsigned edge : {control.left, control.top, control.width, control.height, control.id})
        AddU16(dialog, edge);
    if (!wide)
        AddU32(dialog, control.style);
    if (wide)
        AddU16(dialog, 0xffff);
    wide ? AddU16(dialog, control.kind) : AddU8(dialog, control.kind);
    AddString(dialog, control.text, wide);
    wide ? AddU16(dialog, 0) : AddU8(dialog, 0);
}

Bytes MakeDialog(std::string_view caption, std::string_view text, bool wide)
{
    Bytes dialog;
    AddU32(dialog, 0x80c800c0); // a framed popup with caption, system menu and font
    if (wide)
        AddU32(dialog, 0);
    wide ? AddU16(dialog, 2) : AddU8(dialog, 2);
    for (unsigned edge : {10, 10, 160, 60})
        AddU16(dialog, edge);
    AddString(dialog, "", wide);
    AddString(dialog, "", wide);
    AddString(dialog, caption, wide);
    AddU16(dialog, 8);
    AddString(dialog, "MS Sans Serif", wide);
    AddControl(dialog, {0x50020000, 0xffff, 0x82, 8, 10, 144, 16, text}, wide);
    AddControl(dialog, {0x50010001, 1, 0x80, 55, 38, 50, 14, "OK"}, wide);
    return dialog;
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
    AddString(record, key, wide);
    PadTo(record, 4);
    AddBytes(record, value);
    if (addChildren)
        addChildren(record);
    PutU16(record, start, (unsigned)(record.size() - start));
}

static void AddVersionText(Bytes &record, std::string_view key, std::string_view text, bool wide)
{
    Bytes value;
    AddString(value, text, wide);
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

Bytes MakeCursorGroup(size_t size, unsigned id)
{
    Bytes group;
    for (unsigned value : {0, 2, 1, 32, 64, 1, 1}) // 64: picture and mask
        AddU16(group, value);
    AddU32(group, (uint32_t)size);
    AddU16(group, id);
    return group;
}
