// Texts of the quiet half made Qt's, and drawn.
#pragma once

#include <QFont>
#include <QString>
#include <string>

#include "platform/native/visible.h"

// From the ANSI code page; empty for no bytes.
QString FromCodePage(const char *text, int bytes);
QString FromCodePage(const std::string &text);

// From UTF-8 when it is valid UTF-8, else from the code page: captions and the filters of choosers.
QString FromCaption(const std::string &text);

// The text with others in place of the characters that Qt leaves out, moves at or ends at, where
// Windows draws a character as the face has it: a hyphen for a soft one, else the sign of what the
// face lacks.
QString AsDrawn(QString text);

// A caption as a window's title: what would turn its direction round or break its line shows as
// U+FFFD, and "[*]", Qt's place for a mark, as itself.
QString TitleFrom(const std::string &caption);

// The face, height and weight that stand for a font of the interface. Sizes are logical pixels.
QFont QtFont(const Font &font);

// Entries of the visible half's table.
void MeasureFont(const Font &font, FontSize *size);
int MeasureText(const Font &font, LPCSTR text, int bytes);
void DrawTextLine(const PixelSurface *surface, const RECT *clip, const Font &font, int x, int y,
                  uint32_t pixel, LPCSTR text, int bytes);
