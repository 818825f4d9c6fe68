// Image lists, for whoever shows their pictures.
#pragma once

#include "platform/win32/comctl.h"

// One picture of a list: width x height pixels, 0x00RRGGBB each, the top row first.
struct ListPicture {
    int width;
    int height;
    const uint32_t *pixels; // valid until the list gets another picture or is destroyed
};

// Returns false for a dead list or an index that it does not have.
bool FindListPicture(HIMAGELIST list, int index, ListPicture *picture);
