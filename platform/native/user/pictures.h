// Icons and cursors: the pictures behind their handles.
#pragma once

#include <vector>

#include "platform/win32/types.h"

// Sizes are in pixels of the picture, each of which is one logical pixel where it is shown.
struct ImagePixels {
    int width;
    int height;
    int hotX; // of a cursor: its hot spot, from the top left; of an icon 0
    int hotY;
    // 0xAARRGGBB, the top row first, without gaps; without alpha a colour inverts. Empty: a cursor
    // of the desktop.
    std::vector<uint32_t> pixels;
    int systemCursor; // that one's number (IDC_), else 0
};

// Reads the picture that a module's group of icons or cursors names for the usual size; an icon is
// then made 32 x 32 pixels. Returns false, with the record half filled, when there is none or it
// is larger than 256 x 256 pixels.
bool ReadPicture(HINSTANCE instance, LPCSTR name, bool isCursor, ImagePixels *picture);

// The picture behind an icon's or cursor's handle, which is there for good; NULL for other handles.
const ImagePixels *PictureOf(HICON handle);

// The mouse is over a window of a class with this cursor (NULL: the desktop's own), which shows it.
void NoteClassCursor(HCURSOR cursor);
