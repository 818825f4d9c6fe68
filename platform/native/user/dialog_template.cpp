#include "platform/native/user/dialog_template.h"

#include <iterator>

#include "platform/byte_reader.h"
#include "platform/native/kernel/code_page.h"
#include "platform/win32/user.h"

constexpr int mostControls = 255, mostPoints = 255;
constexpr size_t mostTextBytes = 64 * 1024;

static int TakePlace(ByteReader *reader)
{
    return static_cast<int16_t>(TakeU16(reader));
}

// Takes a text, or 0xFFFF and a number.
static std::string TakeNameOrNumber(ByteReader *reader)
{
    const size_t start = reader->position;
    if (TakeU16(reader) == 0xFFFF)
        return "#" + std::to_string(TakeU16(reader));
    reader->position = start;
    return TakeWideText(reader);
}

// The controls that templates name by number, from this one on.
constexpr size_t firstNumber = 128;
static std::string ClassOf(const std::string &name)
{
    constexpr const char *numbered[] = {"button",  "edit",      "static",
                                        "listbox", "scrollbar", "combobox"};
    for (size_t i = 0; i < std::size(numbered); ++i)
        if (name == "#" + std::to_string(firstNumber + i))
            return numbered[i];
    return name;
}

static ControlTemplate ReadControl(ByteReader *reader, bool isExtended)
{
    ControlTemplate control = {};
    SkipBytes(reader, (4 - reader->position % 4) % 4);
    if (isExtended)
        TakeU32(reader); // help id
    DWORD first = TakeU32(reader), second = TakeU32(reader);
    control.style = isExtended ? second : first;
    control.x = TakePlace(reader);
    control.y = TakePlace(reader);
    control.width = TakePlace(reader);
    control.height = TakePlace(reader);
    control.id = isExtended ? static_cast<int32_t>(TakeU32(reader)) : TakeU16(reader);
    control.className = ClassOf(TakeNameOrNumber(reader));
    control.text = TakeNameOrNumber(reader);
    SkipBytes(reader, TakeU16(reader)); // creation data
    return control;
}

bool ReadDialogTemplate(const void *bytes, size_t size, DialogTemplate *dialog)
{
    ByteReader reader = OpenBytes(bytes, size);
    const DWORD first = TakeU32(&reader), second = TakeU32(&reader);
    const bool isExtended = first == 0xFFFF0001;
    *dialog = {};
    dialog->style = first;
    if (isExtended) {
        TakeU32(&reader); // extended style, after the help id
        dialog->style = TakeU32(&reader);
    }
    static_cast<void>(second); // help id or extended style
    const int count = TakeU16(&reader);
    dialog->x = TakePlace(&reader);
    dialog->y = TakePlace(&reader);
    dialog->width = TakePlace(&reader);
    dialog->height = TakePlace(&reader);
    TakeNameOrNumber(&reader); // menu
    TakeNameOrNumber(&reader); // class
    dialog->caption = TakeWideText(&reader);
    if (dialog->style & DS_SETFONT) {
        dialog->fontHeight = TakeU16(&reader);
        if (isExtended)
            TakeU32(&reader); // weight, italic, character set
        dialog->fontFace = TakeWideText(&reader);
    }
    if (count > mostControls || dialog->fontHeight > mostPoints)
        return false;
    size_t textBytes = dialog->caption.size() + dialog->fontFace.size();
    for (int i = 0; i < count && !reader.failed && textBytes <= mostTextBytes; ++i) {
        dialog->controls.push_back(ReadControl(&reader, isExtended));
        textBytes += dialog->controls.back().className.size() + dialog->controls.back().text.size();
    }
    return !reader.failed && textBytes <= mostTextBytes;
}
