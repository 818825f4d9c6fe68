// What a page tells of one file.
#pragma once

#include "cli/html_page.h"
#include "exe/survey.h"

#include <vector>

// A file whose part of the page is written. Set the fields up to `err` and the others to nothing.
struct PageFile {
    HtmlPage *page;
    std::string path; // as the page and messages name it
    size_t number;    // among the page's files, from 1
    int level;        // of its parts' headings; it has one of its own from 3 on
    FILE *err;        // where faults are told
    FilePages pages;
    Survey survey;
    int hasFaults; // some were told
};

// Adds what the file is and carries. Of a damaged one that is what could be read; faults are told
// on err and in the page. Stops early, with the page's elements closed, when it is full or the user
// wants to stop.
void AppendFile(PageFile *file, FILE *stream);
