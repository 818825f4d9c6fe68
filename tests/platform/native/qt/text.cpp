#include "platform/native/qt/text.h"

#include <gtest/gtest.h>

#include <QFontMetrics>

#include "platform/native/gdi/objects.h"
#include "platform/native/kernel/code_page.h"

TEST(QtText, FontsFitTheirCellAndCaptionsAreUtf8OrTheCodePage)
{
    for (const Font &font : {Font{14, 0, "MS Sans Serif"}, Font{13, 0, "Courier New"}}) {
        FontSize size;
        MeasureFont(font, &size);
        EXPECT_LE(size.ascent + size.descent, font.height);
        EXPECT_GE(size.ascent + size.descent, font.height - 2);
        FontSize again; // in a cell that it fills
        MeasureFont({size.ascent + size.descent, 0, font.face}, &again);
        EXPECT_EQ(again.ascent, size.ascent);
    }
    const Font courier = {13, 0, "Courier New"};
    EXPECT_EQ(MeasureText(courier, "iiii", 4), MeasureText(courier, "WWWW", 4));
    const Font sans = {14, 0, "MS Sans Serif"};
    EXPECT_LT(MeasureText(sans, "iiii", 4), MeasureText(sans, "WWWW", 4));
    EXPECT_EQ(FromCaption("\xC3\xA9t\xC3\xA9"), QString::fromUtf8("été"));
    EXPECT_EQ(FromCaption("\xE9t\xE9"), QString::fromUtf8("été"));
    EXPECT_EQ(TitleFrom("a\xE2\x80\xAE"
                        "b\xE2\x81\xA6"
                        "c\n\xC2\x85"),
              QString::fromUtf8("a�b�c��"));
    EXPECT_EQ(FromCodePage("\xC3\xA9", 2), QString::fromUtf8("Ã©"));
}

TEST(QtText, EveryCharacterOfEveryPageIsDrawn)
{
    const QFontMetrics metrics(QtFont({13, 0, "Courier New"}));
    static CodePage page;
    for (unsigned number : {874u, 1250u, 1251u, 1252u, 1253u, 1254u, 1255u, 1256u, 1257u, 1258u}) {
        ASSERT_TRUE(FillCodePage(number, &page));
        for (int byte = 1; byte < 256; ++byte) {
            const QChar letter = page.units[byte];
            const QString drawn = AsDrawn(letter);
            // Marks lie above others, and signs direct them: these have no width.
            if (letter.isMark() || (letter.category() == QChar::Other_Format && letter != u'\xAD'))
                continue;
            const int width = metrics.horizontalAdvance("|" + drawn + "|");
            EXPECT_NEAR(width - metrics.horizontalAdvance("||"), 9, 7) << number << " " << byte;
        }
    }
    EXPECT_EQ(MeasureText({13, 0, "Courier New"}, "a\xAD\tb", 4),
              MeasureText({13, 0, "Courier New"}, "a-xb", 4));
}
