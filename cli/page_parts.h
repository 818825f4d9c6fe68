// The parts of a file's section on a page, each with the resources of one kind in the file's order.
#pragma once

#include "cli/html_page.h"
#include "cli/progress.h"
#include "exe/picture_groups.h"
#include "exe/survey.h"

#include <vector>

enum PagePartId {
    PartNone, // the tree of all resources alone: what is not in the file, and groups of pictures
    PartVersion,
    PartPictures,
    PartSounds,
    PartStrings,
    PartMessages,
    PartData,
};

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
    bool hasFaults;                  // some were told
    bool isUnreadable;               // a reading failed: what is told may not be all there is
};

// The part that a resource belongs to, by its type and its first bytes.
PagePartId PartOf(FilePages *pages, const SurveyedResource &resource);

// Each adds one resource of its part. Returns false when it is not shown.
bool AppendVersion(PageFile *file, const SurveyedResource &resource);
bool AppendPicture(PageFile *file, const SurveyedResource &resource);
bool AppendSound(PageFile *file, const SurveyedResource &resource);
bool AppendTexts(PageFile *file, const SurveyedResource &resource);
bool AppendData(PageFile *file, const SurveyedResource &resource);

// --- what they share ---

// Takes so many bytes from those that the file's parts may read. Returns false, with the resource
// counted as left out, when there are fewer.
bool TakeBytes(PageFile *file, uint64_t size);

// A resource's type, name and language in one element, and its identifier as an attribute.
std::string ResourceTitle(const PageFile *file, const SurveyedResource &resource);
std::string IdAttribute(const PageFile *file, const SurveyedResource &resource);

// Media that browsers show or play as they are stored.
struct StoredMedium {
    PagePartId part;
    const char *type; // image/png
};

// The medium that the first bytes of a resource tell of; NULL for another one.
const StoredMedium *FindStoredMedium(FilePages *pages, const SurveyedResource &resource);

// Adds a resource's bytes from `start` on as an address (data:). Returns false when they cannot all
// be read.
bool AppendDataAddress(PageFile *file, const SurveyedResource &resource, DWORD start,
                       const char *mediaType);
