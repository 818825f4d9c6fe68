#include "platform/native/user/dialog_template.h"

#include <cstring>

#include "platform/win32/kernel.h"

namespace
{

// One bounded reader: past the end everything reads as zero, and isWrong stays.
struct Reader {
    const BYTE *data;
    size_t size;
    size_t at = 0;
    bool isWrong = false;

    template <typename Number> Number Take()
    {
        Number value = 0;
        if (isWrong || sizeof value > size - at) {
            isWrong = true;
            return 0;
        }
        std::memcpy(&value, data + at, sizeof value);
        at += sizeof value;
        return value;
    }

    int Word()
    {
        return Take<WORD>();
    }

    int Place()
    {
        return Take<int16_t>();
    }

    void Skip(size_t bytes)
    {
        if (bytes > size - at)
            isWrong = true;
        else
            at += bytes;
    }

    void Align()
    {
        Skip((4 - at % 4) % 4);
    }

    std::string Text()
    {
        std::u16string wide;
        while (const int unit = Word())
            wide.push_back(static_cast<char16_t>(unit));
        std::string text(wide.size() * 2, 0);
        text.resize(static_cast<size_t>(
            WideCharToMultiByte(CP_ACP, 0, wide.data(), static_cast<int>(wide.size()), text.data(),
                                static_cast<int>(text.size()), nullptr, nullptr)));
        return text;
    }

    // A text, or 0xFFFF and a number.
    std::string NameOrNumber()
    {
        const size_t start = at;
        if (Word() == 0xFFFF)
            return "#" + std::to_string(Word());
        at = isWrong ? at : start;
        return Text();
    }
};

// The controls that templates name by number.
std::string ClassOf(const std::string &name)
{
    if (name == "#128")
        return "button";
    if (name == "#130")
        return "static";
    return name;
}

ControlTemplate ReadControl(Reader *reader, bool isExtended)
{
    ControlTemplate control = {};
    reader->Align();
    if (isExtended)
        reader->Take<DWORD>(); // help id
    DWORD first = reader->Take<DWORD>(), second = reader->Take<DWORD>();
    control.style = isExtended ? second : first;
    control.x = reader->Place();
    control.y = reader->Place();
    control.width = reader->Place();
    control.height = reader->Place();
    control.id = isExtended ? reader->Take<int32_t>() : reader->Word();
    control.className = ClassOf(reader->NameOrNumber());
    control.text = reader->NameOrNumber();
    reader->Skip(static_cast<size_t>(reader->Word())); // creation data
    return control;
}

} // namespace

bool ReadDialogTemplate(const void *bytes, size_t size, DialogTemplate *dialog)
{
    Reader reader = {static_cast<const BYTE *>(bytes), size};
    const DWORD first = reader.Take<DWORD>(), second = reader.Take<DWORD>();
    const bool isExtended = first == 0xFFFF0001;
    *dialog = {};
    dialog->style = first;
    if (isExtended) {
        reader.Take<DWORD>(); // extended style, after the help id
        dialog->style = reader.Take<DWORD>();
    }
    static_cast<void>(second); // help id or extended style
    const int count = reader.Word();
    dialog->x = reader.Place();
    dialog->y = reader.Place();
    dialog->width = reader.Place();
    dialog->height = reader.Place();
    reader.NameOrNumber(); // menu
    reader.NameOrNumber(); // class
    dialog->caption = reader.Text();
    if (dialog->style & DS_SETFONT) {
        dialog->fontHeight = reader.Word();
        if (isExtended)
            reader.Take<DWORD>(); // weight, italic, character set
        dialog->fontFace = reader.Text();
    }
    for (int i = 0; i < count && !reader.isWrong; ++i)
        dialog->controls.push_back(ReadControl(&reader, isExtended));
    return !reader.isWrong;
}
