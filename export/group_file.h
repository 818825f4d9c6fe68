// Whole icon and cursor files (.ico, .cur) of the groups that executables hold: a group
// (exe/picture_groups.h) names pictures that are resources of their own, the file (Microsoft's
// ICONDIR) holds them behind its directory.
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

#include "exe/picture_groups.h"

struct GroupFile {
    std::vector<BYTE> bytes;          // of the .ico or .cur file
    std::vector<GroupMember> members; // whose pictures are in it, in its order
    size_t missing;                   // pictures that the group names and the file lacks
};

// Makes the whole file of a group of icons or cursors. A cursor's hot spot goes from its picture
// into the directory, and its width and height are the picture's own: compilers differ in what they
// tell in the group. Unless it returns GroupDone there are no bytes.
GroupOutcome MakeGroupFile(FilePages *pages, const PictureIndex *index,
                           const SurveyedResource *group, GroupFile *file);

// Makes the file of one icon's or cursor's picture alone. Returns false, with no bytes, when it
// cannot be read, does not begin as a picture or is longer than what is made of a file of this
// size.
bool MakePictureFile(FilePages *pages, const SurveyedResource *picture, GroupFile *file);
