// The parts of a file's section on a page, each with the resources of one kind in the file's order.
#pragma once

#include "cli/page_file.h"

enum PagePartId {
    PartNone, // the tree of all resources alone: what is not in the file, and groups of pictures
    PartPictures,
    PartSounds,
    PartStrings,
    PartMessages,
    PartData,
};

// The part that a resource belongs to, by its type and its first bytes.
PagePartId PartOf(FilePages *pages, const SurveyedResource &resource);

// Each adds one resource of its part. Returns 0 when it is not shown.
int AppendPicture(PageFile *file, const SurveyedResource &resource);
int AppendSound(PageFile *file, const SurveyedResource &resource);
int AppendTexts(PageFile *file, const SurveyedResource &resource);
int AppendData(PageFile *file, const SurveyedResource &resource);

// --- what they share ---

// Takes so many bytes from those that the file's parts may read. Returns 0, with the resource
// counted as left out, when there are fewer.
int TakeBytes(PageFile *file, uint64_t size);

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

// Adds a resource's bytes from `start` on as an address (data:). Returns 0 when they cannot all be
// read.
int AppendDataAddress(PageFile *file, const SurveyedResource &resource, DWORD start,
                      const char *mediaType);
