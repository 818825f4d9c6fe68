#include "platform/native/qt/text.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStringDecoder>
#include <map>
#include <strings.h>
#include <tuple>

#include "platform/native/gdi/objects.h"
#include "platform/native/qt/surfaces.h"
#include "platform/utf8.h"
#include "platform/win32/kernel.h"

QString FromCodePage(const char *text, int bytes)
{
    QString wide(bytes, Qt::Uninitialized);
    wide.truncate(
        MultiByteToWideChar(CP_ACP, 0, text, bytes, reinterpret_cast<LPWSTR>(wide.data()), bytes));
    return wide;
}

QString FromCodePage(const std::string &text)
{
    return FromCodePage(text.data(), static_cast<int>(text.size()));
}

QString FromCaption(const std::string &text)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString decoded =
        decoder(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
    return decoder.hasError() ? FromCodePage(text) : decoded;
}

QString AsDrawn(QString text)
{
    constexpr char16_t softHyphen = 0xAD;
    constexpr char16_t lastOfText =
        0x9C;                          // what follows is a shorter wording, which is not measured
    constexpr char16_t unknown = 0x81; // no face has it, and Qt does nothing with it
    for (QChar &letter : text)
        if (letter == softHyphen)
            letter = QLatin1Char('-');
        else if (letter == lastOfText || (letter >= u'\t' && letter <= u'\r'))
            letter = unknown;
    return text;
}

QString TitleFrom(const std::string &caption)
{
    QString title = FromCaption(caption);
    for (QChar &letter : title)
        if (SteersText(letter.unicode()))
            letter = QChar::ReplacementCharacter;
    return title.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

static QString FaceOf(const Font &font)
{
    if (strcasecmp(font.face.c_str(), "Courier New") == 0)
        return QStringLiteral("Liberation Mono");
    if (strcasecmp(font.face.c_str(), "MS Sans Serif") == 0)
        return QStringLiteral("Liberation Sans");
    return FromCodePage(font.face);
}

// A positive height is that of the whole cell: the largest face whose cell is not higher. Each size
// that is tried is loaded, so the search begins at what most faces have, and at most at the cell's.
static QFont FitCell(QFont font, int cell)
{
    const auto fits = [&font, cell](int size) {
        font.setPixelSize(size);
        return QFontMetrics(font).height() <= cell;
    };
    int size = std::max(cell * 7 / 8, 1);
    while (size < cell && fits(size + 1))
        ++size;
    while (size > 1 && !fits(size))
        --size;
    font.setPixelSize(size);
    return font;
}

QFont QtFont(const Font &font)
{
    static std::map<std::tuple<int, int, std::string>, QFont> known;
    const auto key = std::make_tuple(font.height, font.weight, font.face);
    const auto found = known.find(key);
    if (found != known.end())
        return found->second;
    QFont made(FaceOf(font));
    if (strcasecmp(font.face.c_str(), "Courier New") == 0)
        made.setStyleHint(QFont::Monospace);
    if (font.weight)
        made.setWeight(static_cast<QFont::Weight>(font.weight));
    if (font.height < 0)
        made.setPixelSize(-font.height);
    else
        made = FitCell(made, font.height ? font.height : 16);
    known[key] = made;
    return made;
}

void MeasureFont(const Font &font, FontSize *size)
{
    const QFontMetrics metrics(QtFont(font));
    static const QString letters =
        QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    size->ascent = metrics.ascent();
    size->descent = metrics.descent();
    size->averageWidth = static_cast<int>(
        (metrics.horizontalAdvance(letters) + letters.size() / 2) / letters.size());
}

int MeasureText(const Font &font, LPCSTR text, int bytes)
{
    return QFontMetrics(QtFont(font)).horizontalAdvance(AsDrawn(FromCodePage(text, bytes)));
}

void DrawTextLine(const PixelSurface *surface, const RECT *clip, const Font &font, int x, int y,
                  uint32_t pixel, LPCSTR text, int bytes)
{
    QImage image = ImageOf(*surface);
    QPainter painter(&image);
    const QFont chosen = QtFont(font);
    painter.setClipRect(
        QRect(clip->left, clip->top, clip->right - clip->left, clip->bottom - clip->top));
    // Lines run from the left, whatever letter is their first.
    painter.setLayoutDirection(Qt::LeftToRight);
    painter.setFont(chosen);
    painter.setPen(QColor::fromRgb(pixel));
    painter.drawText(QPoint(x, y + QFontMetrics(chosen).ascent()),
                     AsDrawn(FromCodePage(text, bytes)));
}
