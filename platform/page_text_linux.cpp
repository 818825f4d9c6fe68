#include "platform/page_text.h"

#include <cerrno>
#include <iconv.h>

#include "platform/native/kernel/code_page.h"

static const char unknownCharacter[] = "\xEF\xBF\xBD";

// Opens a converter of a page; the caller closes it.
static iconv_t OpenConverter(unsigned page)
{
    const std::string name = page == 65001 ? "UTF-8" : "CP" + std::to_string(page);
    return iconv_open("UTF-8", name.c_str());
}

static bool IsOpen(iconv_t converter)
{
    return converter != reinterpret_cast<iconv_t>(-1);
}

// Whether the layer has the page's table.
static bool HasTable(unsigned page)
{
    return page == 0 || page == 874 || (page >= 1250 && page <= 1258);
}

bool KnowsCodePage(unsigned page)
{
    if (HasTable(page))
        return true;
    iconv_t converter = OpenConverter(page);
    if (!IsOpen(converter))
        return false;
    iconv_close(converter);
    return true;
}

static std::string Convert(iconv_t converter, const char *text, size_t length)
{
    std::string utf8;
    char *from = const_cast<char *>(text);
    while (length > 0) {
        char part[256];
        char *to = part;
        size_t room = sizeof part;
        const bool failed = iconv(converter, &from, &length, &to, &room) == static_cast<size_t>(-1);
        utf8.append(part, to);
        if (failed && errno != E2BIG) {
            utf8 += unknownCharacter;
            ++from;
            --length;
            iconv(converter, nullptr, nullptr, nullptr, nullptr);
        }
    }
    return utf8;
}

// A file's texts are of one page, so the last one is kept.
static const CodePage &WindowsPage(unsigned page)
{
    static CodePage kept;
    static unsigned number;
    if (number != page)
        FillCodePage(page, &kept);
    number = page;
    return kept;
}

std::string PageTextToUtf8(unsigned page, const char *text, size_t length)
{
    if (HasTable(page)) {
        const CodePage &table = page == 0 ? AnsiCodePage() : WindowsPage(page);
        std::string units;
        for (size_t i = 0; i < length; ++i) {
            const WCHAR unit = table.units[static_cast<unsigned char>(text[i])];
            units += static_cast<char>(unit & 0xFF);
            units += static_cast<char>(unit >> 8);
        }
        return UnitsToUtf8(reinterpret_cast<const uint8_t *>(units.data()), length);
    }
    iconv_t converter = OpenConverter(page);
    if (IsOpen(converter)) {
        std::string utf8 = Convert(converter, text, length);
        iconv_close(converter);
        return utf8;
    }
    std::string utf8;
    for (size_t i = 0; i < length; ++i)
        utf8 +=
            static_cast<unsigned char>(text[i]) < 0x80 ? std::string(1, text[i]) : unknownCharacter;
    return utf8;
}
