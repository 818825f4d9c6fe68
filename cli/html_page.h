// A page of HTML that is written as it goes: one file that needs nothing else, runs no scripts and
// asks no network (its Content-Security-Policy says so to the browser), readable in light and dark
// and on paper.
//
// Whatever comes from a file goes through HtmlAttribute, HtmlText or HtmlName, so that none of it
// is markup.
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <cstdio>
#include <string>

struct HtmlPage {
    FILE *stream;     // the caller's, which closes it
    uint64_t limit;   // bytes that the page may have; what closes it comes on top
    uint64_t length;  // bytes so far
    std::string part; // of it, not handed on yet
    bool isFull;      // something was left out: nothing more is begun
    bool failed;      // a write did; the reason is noted (platform/files.h)
};

// Text as it stands in quoted attributes and in a title: the characters of markup as references,
// what steers text as lists show it (platform/console.h), and U+FFFD for what is no UTF-8 and for
// characters that no page may have.
std::string HtmlAttribute(const std::string &text);

// Text as it stands in elements: the same, with control characters by their short names, each in an
// element of the class "control".
std::string HtmlText(const std::string &text);

// The same in an element that keeps the text's direction to itself.
std::string HtmlName(const std::string &text);

// Adds markup.
void AppendHtml(HtmlPage *page, const std::string &markup);

// Whether so many bytes more have room. When not, the page is full from then on.
bool HasRoom(HtmlPage *page, uint64_t bytes);

// The same for bytes as AppendBase64 adds them.
bool HasRoomForBase64(HtmlPage *page, uint64_t bytes);

// Adds bytes in base 64 (RFC 4648). Of pieces that follow each other each but the last has a
// multiple of three bytes.
void AppendBase64(HtmlPage *page, const BYTE *bytes, size_t size);

// Begins the page with a title, which is text, and its first heading; and ends it. EndPage hands on
// what is left and returns false when not all could be written.
void BeginPage(HtmlPage *page, const std::string &title);
bool EndPage(HtmlPage *page);
