#include "samples/templates.h"

#include "samples/builder/texts.h"

Bytes MakeMenu(std::string_view popup, std::string_view command, unsigned id, bool wide)
{
    Bytes menu;
    AddU32(menu, 0);    // version 0, nothing more in the header
    AddU16(menu, 0x90); // a popup, the last of the bar
    AddEndedText(menu, popup, wide);
    AddU16(menu, 0x80); // a command, the last of the popup
    AddU16(menu, id);
    AddEndedText(menu, command, wide);
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
    AddEndedText(dialog, control.text, wide);
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
    AddEndedText(dialog, "", wide);
    AddEndedText(dialog, "", wide);
    AddEndedText(dialog, caption, wide);
    AddU16(dialog, 8);
    AddEndedText(dialog, "MS Sans Serif", wide);
    AddControl(dialog, {0x50020000, 0xffff, 0x82, 8, 10, 144, 16, text}, wide);
    AddControl(dialog, {0x50010001, 1, 0x80, 55, 38, 50, 14, "OK"}, wide);
    return dialog;
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
