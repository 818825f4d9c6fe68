// Icons and cursors: the pictures behind their handles.
#pragma once

#include <vector>

#include "platform/win32/user.h"

struct ImagePixels {
    int width;
    int height;
    int hotX; // of a cursor
    int hotY;
    // 0xAARRGGBB, the top row first; without alpha a colour inverts. Empty: a cursor of the
    // desktop.
    std::vector<uint32_t> pixels;
    int systemCursor; // its number, else 0
};

// The picture behind an icon's or cursor's handle; NULL for a dead one.
const ImagePixels *PictureOf(HICON handle);

// The mouse is over a window of a class with this cursor (NULL: the desktop's own), which shows it.
void NoteClassCursor(HCURSOR cursor);
