#include "platform/native/kernel/code_page.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "platform/native/kernel/code_page_tables.h"
#include "platform/win32/kernel.h"

namespace
{

struct PageLanguages {
    unsigned page;
    const char *languages; // ISO 639 codes, each followed by a space
};

} // namespace

// Microsoft's assignment of languages to single-byte pages; every other language has 1252.
constexpr PageLanguages pageLanguages[] = {
    {874, "th "},
    {1250, "bs cs hr hu pl ro sk sl sq tk "},
    {1251, "be bg kk ky mk mn ru sr tg tt uk "},
    {1253, "el "},
    {1254, "az tr uz "},
    {1255, "he iw yi "},
    {1256, "ar fa ku ps sd ug ur "},
    {1257, "et lt lv "},
    {1258, "vi "},
};

static std::string LocaleOfUser()
{
    for (const char *name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char *value = getenv(name);
        if (value && value[0] != 0)
            return value;
    }
    return "";
}

// Counts the length of a text that ends with its terminator, which is counted too.
template <typename Unit> static int LengthWithTerminator(const Unit *text)
{
    size_t length = 0;
    while (text[length] != 0)
        ++length;
    return length < INT_MAX ? static_cast<int>(length) + 1 : 0;
}

bool FillCodePage(unsigned number, CodePage *page)
{
    for (const CodePageTable &table : codePageTables)
        if (table.page == number) {
            for (int byte = 0; byte < 256; ++byte)
                page->units[byte] =
                    byte < 0x80 ? static_cast<WCHAR>(byte) : table.units[byte - 0x80];
            memset(page->bytes, 0, sizeof page->bytes);
            for (int byte = 255; byte >= 0; --byte)
                page->bytes[page->units[byte]] = static_cast<BYTE>(byte);
            return true;
        }
    return false;
}

unsigned CodePageOfLocale(std::string_view locale)
{
    const std::string language(locale.substr(0, locale.find_first_of("_.@")));
    // A language of two scripts says in its modifier which one is meant.
    if (language == "sr" && locale.find("@latin") != std::string_view::npos)
        return 1250;
    if ((language == "uz" || language == "az") &&
        locale.find("@cyrillic") != std::string_view::npos)
        return 1251;
    if (language.size() == 2)
        for (const PageLanguages &row : pageLanguages)
            if (strstr(row.languages, (language + " ").c_str()))
                return row.page;
    return 1252;
}

const CodePage &AnsiCodePage()
{
    static CodePage page;
    [[maybe_unused]] static const bool known =
        FillCodePage(CodePageOfLocale(LocaleOfUser()), &page);
    return page;
}

// Stores a character as UTF-8 and gives its length.
static int EncodeUtf8(uint32_t character, char bytes[4])
{
    bytes[0] = static_cast<char>(character);
    if (character < 0x80)
        return 1;
    const int following = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    bytes[0] = static_cast<char>((0xF80 >> following & 0xFF) | character >> 6 * following);
    for (int i = following; i > 0; --i, character >>= 6)
        bytes[i] = static_cast<char>(0x80 | (character & 0x3F));
    return following + 1;
}

static char ByteOfUnit(const CodePage &page, WCHAR unit)
{
    const BYTE byte = page.bytes[unit];
    return byte == 0 && unit != 0 ? '?' : static_cast<char>(byte);
}

std::string TextOfUnits(const uint8_t *units, size_t count)
{
    const CodePage &page = AnsiCodePage();
    ByteReader reader = OpenBytes(units, 2 * count);
    std::string text(count, 0);
    for (char &letter : text)
        letter = ByteOfUnit(page, TakeU16(&reader));
    return text;
}

std::string TakeWideText(ByteReader *reader)
{
    const CodePage &page = AnsiCodePage();
    std::string text;
    while (const WCHAR unit = TakeU16(reader))
        text += ByteOfUnit(page, unit);
    return text;
}

// Writes UTF-8 and gives its length in bytes; 0 when it is more than outSize, where that is not 0.
static int UnitsToUtf8(LPCWSTR wide, int units, char *out, int outSize)
{
    int64_t length = 0;
    for (int i = 0; i < units; ++i) {
        uint32_t character = wide[i];
        const uint32_t next = i + 1 < units ? wide[i + 1] : 0;
        if (character >= 0xD800 && character < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
            ++i;
        } else if (character >= 0xD800 && character < 0xE000) {
            character = 0xFFFD;
        }
        char bytes[4];
        const int count = EncodeUtf8(character, bytes);
        if (outSize != 0 && length + count > outSize)
            return 0;
        if (outSize != 0)
            memcpy(out + length, bytes, static_cast<size_t>(count));
        length += count;
    }
    return length <= INT_MAX ? static_cast<int>(length) : 0;
}

int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int units, LPSTR out,
                               int outSize, LPCSTR defaultChar, LPBOOL usedDefault)
{
    if ((codePage != CP_ACP && codePage != CP_UTF8) || flags != 0 || !wide || outSize < 0 ||
        (!out && outSize != 0) || defaultChar || usedDefault)
        return 0;
    if (units < 0)
        units = LengthWithTerminator(wide);
    if (codePage == CP_UTF8)
        return UnitsToUtf8(wide, units, out, outSize);
    if (outSize == 0 || units == 0)
        return units;
    const CodePage &page = AnsiCodePage();
    const int count = std::min(units, outSize);
    for (int i = 0; i < count; ++i)
        out[i] = ByteOfUnit(page, wide[i]);
    return count == units ? units : 0;
}

int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int bytes, LPWSTR out,
                               int outSize)
{
    if (codePage != CP_ACP || flags != 0 || !text || outSize < 0 || (!out && outSize != 0))
        return 0;
    if (bytes < 0)
        bytes = LengthWithTerminator(text);
    if (outSize == 0 || bytes == 0)
        return bytes;
    const CodePage &page = AnsiCodePage();
    const int count = std::min(bytes, outSize);
    for (int i = 0; i < count; ++i)
        out[i] = page.units[static_cast<unsigned char>(text[i])];
    return count == bytes ? bytes : 0;
}
