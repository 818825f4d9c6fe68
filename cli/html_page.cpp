#include "cli/html_page.h"

#include "cli/html_style.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/utf8.h"

#include <iterator>

#define PART_SIZE 65536

static const char *ReferenceOf(char32_t code)
{
    switch (code) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '"': return "&quot;";
    case '\'': return "&#39;";
    default: return nullptr;
    }
}

static bool IsNoCharacter(char32_t code)
{
    return (code & 0xFFFE) == 0xFFFE || (code >= 0xFDD0 && code <= 0xFDEF);
}

// The letter that begins at a place, as it stands in markup.
static std::string LetterHtml(const std::string &text, size_t at, const Utf8Letter &letter)
{
    const char *reference = ReferenceOf(letter.code);
    if (reference != nullptr)
        return reference;
    if (!letter.isValid || IsNoCharacter(letter.code))
        return "\xEF\xBF\xBD";
    return text.substr(at, letter.length);
}

// The short name of a control character that has a picture, which many fonts lack; NULL for another
// letter.
static const char *NameOfPicture(char32_t code)
{
    static const char *const names[] = {
        "NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL", "BS",  "TAB", "LF",
        "VT",  "FF",  "CR",  "SO",  "SI",  "DLE", "DC1", "DC2", "DC3", "DC4", "NAK",
        "SYN", "ETB", "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US",
    };
    const char32_t first = 0x2400, pictureOfDelete = 0x2421;
    if (code == pictureOfDelete)
        return "DEL";
    return code >= first && code < first + std::size(names) ? names[code - first] : nullptr;
}

static std::string MakeHtml(const std::string &text, bool hasElements)
{
    const std::string safe = SafeText(text);
    std::string html;
    html.reserve(safe.size());
    for (size_t at = 0; at < safe.size();) {
        const Utf8Letter letter = LetterAt(safe, at);
        const char *name = hasElements ? NameOfPicture(letter.code) : nullptr;
        html += name != nullptr ? std::string("<span class=\"control\">") + name + "</span>"
                                : LetterHtml(safe, at, letter);
        at += letter.length;
    }
    return html;
}

std::string HtmlAttribute(const std::string &text)
{
    return MakeHtml(text, false);
}

std::string HtmlText(const std::string &text)
{
    return MakeHtml(text, true);
}

std::string HtmlName(const std::string &text)
{
    return "<bdi>" + HtmlText(text) + "</bdi>";
}

static void Flush(HtmlPage *page)
{
    if (!page->failed &&
        fwrite(page->part.data(), 1, page->part.size(), page->stream) != page->part.size()) {
        NoteStreamError();
        page->failed = true;
    }
    page->part.clear();
}

void AppendHtml(HtmlPage *page, const std::string &markup)
{
    page->part += markup;
    page->length += markup.size();
    if (page->part.size() >= PART_SIZE)
        Flush(page);
}

bool HasRoom(HtmlPage *page, uint64_t bytes)
{
    if (page->length > page->limit || bytes > page->limit - page->length)
        page->isFull = true;
    return !page->isFull;
}

bool HasRoomForBase64(HtmlPage *page, uint64_t bytes)
{
    return HasRoom(page, bytes / 3 * 4);
}

void AppendBase64(HtmlPage *page, const BYTE *bytes, size_t size)
{
    static const char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (size_t at = 0; at < size; at += 3) {
        const DWORD group = (DWORD)bytes[at] << 16 |
                            (at + 1 < size ? (DWORD)bytes[at + 1] << 8 : 0) |
                            (at + 2 < size ? (DWORD)bytes[at + 2] : 0);
        char four[] = {digits[group >> 18], digits[group >> 12 & 63], digits[group >> 6 & 63],
                       digits[group & 63]};
        if (at + 2 >= size)
            four[3] = '=';
        if (at + 1 >= size)
            four[2] = '=';
        page->part.append(four, sizeof four);
        page->length += sizeof four;
        if (page->part.size() >= PART_SIZE)
            Flush(page);
    }
}

void BeginPage(HtmlPage *page, const std::string &title)
{
    AppendHtml(page,
               "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
               "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
               "img-src data:; media-src data:; style-src 'unsafe-inline'; base-uri 'none'; "
               "form-action 'none'\">\n"
               "<meta name=\"referrer\" content=\"no-referrer\">\n"
               "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
               "<meta name=\"color-scheme\" content=\"light dark\">\n"
               "<meta name=\"generator\" content=\"Quillmoor " QUILLMOOR_VERSION "\">\n<title>");
    AppendHtml(page, HtmlAttribute(title) + "</title>\n<style>\n" + pageStyle +
                         "</style>\n</head>\n<body>\n<h1>" + HtmlName(title) + "</h1>\n");
}

bool EndPage(HtmlPage *page)
{
    AppendHtml(page, "</body>\n</html>\n");
    Flush(page);
    if (!page->failed && fflush(page->stream) != 0) {
        NoteStreamError();
        page->failed = true;
    }
    return !page->failed;
}
