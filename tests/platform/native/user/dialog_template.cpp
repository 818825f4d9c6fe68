// Dialog templates, both layouts, and what hostile ones may not do.
#include <gtest/gtest.h>

#include <tuple>
#include <variant>

#include "platform/native/user/dialog_template.h"
#include "samples/builder/bytes.h"

namespace
{

// Words, and in strings the words of their letters and of a 0 behind them.
Bytes Pack(std::initializer_list<std::variant<int, const char *>> parts)
{
    Bytes bytes;
    for (const auto &part : parts)
        if (const int *word = std::get_if<int>(&part))
            AddU16(bytes, (unsigned)*word & 0xFFFF);
        else
            for (const char *letter = std::get<const char *>(part);; ++letter) {
                AddU16(bytes, (BYTE)*letter);
                if (!*letter)
                    break;
            }
    return bytes;
}

// Parts, each at a multiple of 4.
Bytes Align(std::initializer_list<Bytes> parts)
{
    Bytes bytes;
    for (const Bytes &part : parts) {
        PadTo(bytes, 4);
        AddBytes(bytes, part);
    }
    return bytes;
}

const Bytes plain =
    Align({Pack({0x00C4, 0x90C0, 1, 0, 2, 1, -2, 240, 222, 0, 0, "About", 8, "MS Sans Serif"}),
           Pack({0x0300, 0x5001, 0, 0, 128, 200, 50, 14, 1, -1, 128, "OK", 0}),
           Pack({0x0003, 0x5000, 0, 0, -1, 4, 20, 20, -1, -1, 130, -1, 5, 0})});
const Bytes extended = Align(
    {Pack({1,  -1,  0,   0, 1, 0,       0x00C4, 0x90C0, 2, 1,
           -2, 240, 222, 0, 0, "About", 8,      0,      0, "MS Sans Serif"}),
     Pack({0, 0, 0, 0, 0x0300, 0x5001, 128, 200, 50, 14, 1, 0, "button", "OK", 4, 0x5678, 0x1234}),
     Pack({0, 0, 0, 0, 0x0003, 0x5000, -1, 4, 20, 20, -1, -1, -1, 130, -1, 5, 0})});

TEST(DialogTemplate, BothLayoutsSayTheSame)
{
    for (const Bytes &bytes : {plain, extended}) {
        DialogTemplate dialog;
        ASSERT_TRUE(ReadDialogTemplate(bytes.data(), bytes.size(), &dialog));
        EXPECT_EQ(std::tuple(dialog.style, dialog.x, dialog.y, dialog.width, dialog.height),
                  std::tuple(0x90C000C4u, 1, -2, 240, 222));
        EXPECT_EQ(std::tuple(dialog.caption, dialog.fontHeight, dialog.fontFace),
                  std::tuple("About", 8, "MS Sans Serif"));
        ASSERT_EQ(dialog.controls.size(), 2u);
        const ControlTemplate &ok = dialog.controls[0], &icon = dialog.controls[1];
        EXPECT_EQ(std::tuple(ok.className, ok.text, ok.id, ok.style, ok.x),
                  std::tuple("button", "OK", 1, 0x50010300u, 128));
        EXPECT_EQ(std::tuple(icon.className, icon.text, icon.x), std::tuple("static", "#5", -1));
    }
}

TEST(DialogTemplate, OneThatEndsEarlyIsNone)
{
    for (const Bytes &whole : {plain, extended})
        for (size_t size = 0; size < whole.size(); ++size) {
            // Of exactly that size, so that a read past the end is found out.
            const Bytes cut(whole.begin(), whole.begin() + (std::ptrdiff_t)size);
            DialogTemplate dialog;
            EXPECT_FALSE(ReadDialogTemplate(cut.data(), cut.size(), &dialog)) << size;
        }
}

// A control of no class, with a text of so many letters.
Bytes Control(size_t letters)
{
    Bytes control = Pack({0, 0, 0, 0, 0, 0, 1, 1, 1, 0});
    for (size_t i = 0; i < letters; ++i)
        AddU16(control, 'x');
    AddBytes(control, Pack({0, 0}));
    PadTo(control, 4);
    return control;
}

TEST(DialogTemplate, OneThatNobodyWouldLookAtIsNone)
{
    const struct {
        int controls, points;
        size_t letters;
        bool isTaken;
    } cases[] = {
        {255, 255, 256, true}, {256, 8, 0, false}, {1, 256, 0, false}, {3, 8, 22'000, false}};
    for (const auto &[controls, points, letters, isTaken] : cases) {
        Bytes bytes =
            Align({Pack({0x40, 0, 0, 0, controls, 0, 0, 9, 9, 0, 0, 0, points, "F"}), {}});
        for (int i = 0; i < controls; ++i)
            AddBytes(bytes, Control(letters));
        DialogTemplate dialog;
        EXPECT_EQ(ReadDialogTemplate(bytes.data(), bytes.size(), &dialog), isTaken) << controls;
    }
}

} // namespace
