#include "cli/page_file.h"

#include "tests/fuzz/fuzz.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>

// Every element that a page has, ends where it is to, and no attribute does anything.
static void CheckMarkup(const std::string &html)
{
    static const std::set<std::string> names = {
        "section", "h2",         "h3", "dl",      "dt",  "dd",  "a",    "p",  "div",    "table",
        "thead",   "tbody",      "tr", "th",      "td",  "bdi", "span", "b",  "img",    "figure",
        "audio",   "figcaption", "br", "details", "pre", "nav", "ul",   "li", "summary"};
    std::vector<std::string> open;
    for (size_t at = html.find('<'); at != std::string::npos; at = html.find('<', at + 1)) {
        const size_t end = html.find_first_of("<>", at + 1);
        Check(end != std::string::npos && html[end] == '>');
        const std::string tag = html.substr(at + 1, end - at - 1);
        const bool isEnd = tag.starts_with('/');
        const std::string name = tag.substr(isEnd, tag.find(' ') - isEnd);
        Check(names.contains(name));
        Check(tag.find(" on") == std::string::npos);
        if (isEnd) {
            Check(!open.empty() && open.back() == name);
            open.pop_back();
        } else if (name != "br" && name != "img") {
            open.push_back(name);
        }
    }
    Check(open.empty());
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static FILE *nowhere = fopen("/dev/null", "wb");
    char *text = nullptr;
    size_t length = 0;
    FILE *file = fopen(FileOf(data, size), "rb");
    HtmlPage page = {open_memstream(&text, &length), 1 << 20, 0, "", 0, 0};
    Progress progress = StartProgress(nowhere);
    const auto told = std::make_unique<PageFile>();
    told->page = &page;
    told->path = "<b>";
    told->number = 1;
    told->level = 3;
    told->progress = &progress;
    told->err = nowhere;
    AppendFile(told.get(), file);
    EndPage(&page);
    fclose(page.stream);
    const std::string html(text, length);
    free(text);
    fclose(file);
    CheckMarkup(html.substr(0, html.find("</body>")));
    return 0;
}
