// Which group each icon and cursor picture belongs to (Microsoft's GRPICONDIR: a directory of a
// group's pictures, each by its number).
#pragma once

#include "exe/file_pages.h"
#include "exe/surveyed.h"

#include <map>
#include <tuple>

struct PictureGroups {
    // By the picture's type, number and language; the first group that names it.
    std::map<std::tuple<DWORD, DWORD, WORD>, const SurveyedResource *> ofPicture;
};

// Reads the groups of a survey, which must outlive them. A group that cannot be read, or is cut
// short, names the pictures that it has; of groups that together are longer than what is kept of a
// file of this size the last are left out.
void ReadPictureGroups(FilePages *pages, const Survey *survey, PictureGroups *groups);

// The group of an icon or cursor picture: one of its language before any other. NULL when no group
// names it.
const SurveyedResource *FindPictureGroup(const PictureGroups *groups,
                                         const SurveyedResource *picture);
