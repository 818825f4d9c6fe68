// Size and depth of a picture by its first bytes: a device-independent bitmap's header, or that of
// a PNG picture (ISO/IEC 15948), which icons may be.
#pragma once

#include "platform/win32.h"

#define PICTURE_START_SIZE 44 // bytes of its start that tell all of it

enum PictureKind {
    PictureBitmap,
    PictureIcon,   // its bitmap has twice the picture's height
    PictureCursor, // the same behind a hot spot of 4 bytes
};

struct PictureInfo {
    LONG width;  // pixels
    LONG height; // rows
    DWORD bits;  // a pixel
    bool isPng;
};

// Reads them from a resource's first bytes; size, at most PICTURE_START_SIZE, is how many there
// are. Returns false, with all fields 0, when they do not hold a whole header.
bool ReadPictureInfo(const BYTE *data, size_t size, PictureKind kind, PictureInfo *info);
