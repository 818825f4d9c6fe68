// Dialog templates, both layouts, and what hostile ones may not do.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/native/user/dialog_template.h"

namespace
{

typedef std::vector<BYTE> Bytes;

struct Writer {
    Bytes bytes;

    Writer &Word(int value)
    {
        bytes.push_back((BYTE)value);
        bytes.push_back((BYTE)(value >> 8));
        return *this;
    }

    Writer &Double(DWORD value)
    {
        return Word((int)(value & 0xFFFF)).Word((int)(value >> 16));
    }

    Writer &Text(const char *text)
    {
        for (; *text; ++text)
            Word(*text);
        return Word(0);
    }

    Writer &Align()
    {
        while (bytes.size() % 4)
            bytes.push_back(0);
        return *this;
    }
};

Bytes MakePlain()
{
    Writer writer;
    writer.Double(0x90C000C4).Double(1).Word(2);
    writer.Word(1).Word(-2).Word(240).Word(222);
    writer.Word(0).Word(0).Text("About").Word(8).Text("MS Sans Serif");
    writer.Align().Double(0x50010300).Double(0).Word(128).Word(200).Word(50).Word(14).Word(1);
    writer.Word(0xFFFF).Word(128).Text("OK").Word(0);
    writer.Align().Double(0x50000003).Double(0).Word(-1).Word(4).Word(20).Word(20).Word(0xFFFF);
    writer.Word(0xFFFF).Word(130).Word(0xFFFF).Word(5).Word(0);
    return writer.bytes;
}

Bytes MakeExtended()
{
    Writer writer;
    writer.Double(0xFFFF0001).Double(0).Double(1).Double(0x90C000C4).Word(2);
    writer.Word(1).Word(-2).Word(240).Word(222);
    writer.Word(0).Word(0).Text("About").Word(8).Double(0).Text("MS Sans Serif");
    writer.Align().Double(0).Double(0).Double(0x50010300);
    writer.Word(128).Word(200).Word(50).Word(14).Double(1);
    writer.Text("button").Text("OK").Word(4).Double(0x12345678);
    writer.Align().Double(0).Double(0).Double(0x50000003);
    writer.Word(-1).Word(4).Word(20).Word(20).Double(0xFFFFFFFF);
    writer.Word(0xFFFF).Word(130).Word(0xFFFF).Word(5).Word(0);
    return writer.bytes;
}

TEST(DialogTemplate, BothLayoutsSayTheSame)
{
    for (const Bytes &bytes : {MakePlain(), MakeExtended()}) {
        DialogTemplate dialog;
        ASSERT_TRUE(ReadDialogTemplate(bytes.data(), bytes.size(), &dialog));
        EXPECT_EQ(dialog.style, 0x90C000C4u);
        EXPECT_EQ(dialog.x, 1);
        EXPECT_EQ(dialog.y, -2);
        EXPECT_EQ(dialog.width, 240);
        EXPECT_EQ(dialog.height, 222);
        EXPECT_EQ(dialog.caption, "About");
        EXPECT_EQ(dialog.fontHeight, 8);
        EXPECT_EQ(dialog.fontFace, "MS Sans Serif");
        ASSERT_EQ(dialog.controls.size(), 2u);
        EXPECT_EQ(dialog.controls[0].className, "button");
        EXPECT_EQ(dialog.controls[0].text, "OK");
        EXPECT_EQ(dialog.controls[0].id, 1);
        EXPECT_EQ(dialog.controls[0].style, 0x50010300u);
        EXPECT_EQ(dialog.controls[0].x, 128);
        EXPECT_EQ(dialog.controls[1].className, "static");
        EXPECT_EQ(dialog.controls[1].text, "#5");
        EXPECT_EQ(dialog.controls[1].x, -1);
    }
}

TEST(DialogTemplate, OneThatEndsEarlyIsNone)
{
    for (const Bytes &whole : {MakePlain(), MakeExtended()})
        for (size_t size = 0; size < whole.size(); ++size) {
            // Of exactly that size, so that a read past the end is found out.
            const Bytes cut(whole.begin(), whole.begin() + (std::ptrdiff_t)size);
            DialogTemplate dialog;
            EXPECT_FALSE(ReadDialogTemplate(cut.data(), cut.size(), &dialog)) << size;
        }
}

} // namespace
