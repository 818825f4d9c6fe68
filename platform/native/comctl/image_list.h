// Image lists, for whoever shows their pictures.
#pragma once

#include "platform/win32/comctl.h"

// One picture of a list: width x height pixels, 0x00RRGGBB each, the top row first, without gaps.
struct ListPicture {
    int width;
    int height;
    const uint32_t *pixels; // the list's; they hold until it gets another picture or is destroyed
};

// Finds a picture by its index, from 0 on. Returns false, and leaves it, for a dead list or an
// index that it does not have.
bool FindListPicture(HIMAGELIST list, int index, ListPicture *picture);
