// Whole icon and cursor files (.ico, .cur) of the groups that executables hold: a group resource
// (Microsoft's GRPICONDIR) names pictures that are resources of their own by number, the file
// (ICONDIR) holds them behind its directory.
//
// How to use it:
//
//     PictureIndex pictures;
//     GroupFile file;
//     IndexPictures(&survey, &pictures);              // once a file
//     if (MakeGroupFile(&pages, &pictures, &group, &file) == GroupDone)
//         fwrite(file.bytes.data(), 1, file.bytes.size(), stream);
//
// Memory that is not there is told by std::bad_alloc.
#pragma once

#include "exe/file_pages.h"
#include "exe/surveyed.h"

#include <map>
#include <tuple>

// The icon and cursor pictures of a survey, which must outlive it: those that lie in the file.
struct PictureIndex {
    // By type, number and language; anyLanguage stands for the first one of the number.
    std::map<std::tuple<DWORD, DWORD, DWORD>, const SurveyedResource *> pictures;
    int isNe; // whose pictures are padded
};

void IndexPictures(const Survey *survey, PictureIndex *index);

// Whether a resource is a group of icons or of cursors.
int IsIconGroup(const SurveyedResource *resource);
int IsCursorGroup(const SurveyedResource *resource);

// A picture as its group's directory tells of it.
struct GroupMember {
    WORD width;      // pixels; 0 for 256 and more, and in a group of cursors as told
    WORD height;     // rows; the same, and there mostly twice the picture's
    BYTE colorCount; // 0 for 256 and more; icons only
    BYTE reserved;   // icons only
    WORD planes;
    WORD bitCount;
    DWORD size; // bytes of the picture, a cursor's hot spot included
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

struct GroupFile {
    std::vector<BYTE> bytes; // of the .ico or .cur file
    size_t missing;          // pictures that the group names and the file lacks
};

// Makes the whole file of a group of icons or cursors. A cursor's hot spot goes from its picture
// into the directory, and its width and height are the picture's own: compilers differ in what they
// tell in the group. Unless it returns GroupDone there are no bytes.
GroupOutcome MakeGroupFile(FilePages *pages, const PictureIndex *index,
                           const SurveyedResource *group, GroupFile *file);
