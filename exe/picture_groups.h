// Which pictures a group of icons or cursors has, and which group a picture belongs to: a group
// (content/picture_group.h) names its pictures by number, and there may be several of a number, in
// different languages. What a survey holds of both must outlive the answers.
#pragma once

#include "content/picture_group.h"
#include "exe/file_pages.h"
#include "exe/surveyed.h"

#include <map>
#include <tuple>

// Whether a resource is a group of icons or of cursors.
bool IsIconGroup(const SurveyedResource *resource);
bool IsCursorGroup(const SurveyedResource *resource);

struct PictureGroups {
    // By the picture's type, number and language; the first group that names it.
    std::map<std::tuple<DWORD, DWORD, WORD>, const SurveyedResource *> ofPicture;
};

// Reads the groups of a survey. A group that cannot be read, or is cut short, names the pictures
// that it has; of groups that together are longer than what is kept of a file of this size the last
// are left out.
void ReadPictureGroups(FilePages *pages, const Survey *survey, PictureGroups *groups);

// The group of an icon or cursor picture: one of its language before any other. NULL when no group
// names it.
const SurveyedResource *FindPictureGroup(const PictureGroups *groups,
                                         const SurveyedResource *picture);

// The icon and cursor pictures of a survey that lie in the file.
struct PictureIndex {
    // By type, number and language; anyLanguage stands for the first one of the number.
    std::map<std::tuple<DWORD, DWORD, DWORD>, const SurveyedResource *> pictures;
    bool isNe; // whose pictures are padded
};

// The choice of the pictures that a group names, for a survey of them alone (exe/survey.h); of all
// of their kind when the group names none.
SurveyChoice ChoosePictures(FilePages *pages, const SurveyedResource *group);

void IndexPictures(const Survey *survey, PictureIndex *index);

// A picture of a group that lies in the file.
struct GroupMember {
    GroupEntry told; // of it by the group
    DWORD size;      // bytes of the picture, a cursor's hot spot included
    const SurveyedResource *picture;
};

enum GroupOutcome {
    GroupDone,
    GroupUnreadable, // its own bytes or a picture's cannot be read, or are no group
    GroupEmpty,      // none of its pictures is in the file
    GroupTooLarge,   // its pictures together are longer than what is made of a file of this size
};

// Reads a group's directory: the members whose pictures lie in the file, in its order. Each is the
// picture of the group's language, else the first of its number. missing counts the others,
// entries that a cut directory lacks included. Returns GroupDone, GroupUnreadable or GroupEmpty.
GroupOutcome ReadGroup(FilePages *pages, const PictureIndex *index, const SurveyedResource *group,
                       std::vector<GroupMember> *members, size_t *missing);
