// What a page tells of one file.
#pragma once

#include "cli/html_page.h"
#include "cli/progress.h"
#include "exe/picture_groups.h"
#include "exe/survey.h"

#include <vector>

// A file whose section of the page is written. Set the fields up to `err` and the others to
// nothing.
struct PageFile {
    HtmlPage *page;
    std::string path;   // as the page and messages name it
    size_t number;      // among the page's files, from 1
    int level;          // of its parts' headings; from 3 on it has a heading of its own
    Progress *progress; // of the run; a file that is alone shows its resources'
    FILE *err;          // where faults are told
    FilePages pages;
    Survey survey;
    PictureGroups groups;
    std::vector<BYTE> parts;         // of the survey's resources: a PagePartId each
    std::vector<BYTE> isShown;       // whether the part has it
    uint64_t bytesLeft;              // that its parts may still read
    uint64_t pixelsLeft;             // and unpack
    size_t leftOut;                  // resources that were past these
    size_t undrawn;                  // pictures that cannot be drawn
    std::vector<std::string> untold; // faults of the part that is written
    int hasFaults;                   // some were told
};

// Adds what the file is and carries. Of a damaged one that is what could be read; faults are told
// on err and in the page. Stops early, with the page's elements closed, when it is full or the user
// wants to stop.
void AppendFile(PageFile *file, FILE *stream);
