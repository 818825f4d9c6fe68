// One picture of an icon as a PNG file, which every desktop shows.
#pragma once

#include "export/group_file.h"

// Makes a PNG file of the best picture of a group: the smallest one whose longer side has at least
// `size` pixels, else the largest; of equal ones the one of more bits a pixel. Where it is larger
// it is made smaller. A picture that cannot be drawn leaves its place to the next best. Empty when
// none of them can be drawn.
std::vector<BYTE> MakeIconPng(FilePages *pages, const std::vector<GroupMember> &members, int size);
