// The PNG codec library. On Windows it is kvtpng32.dll, which stands on the system's imaging
// codec; on Linux it stands on libpng.
#pragma once

#include "platform/win32.h"

extern "C" {

// Decodes a PNG file, whatever its colour type, depth and interlacing, to a movable block with a
// packed DIB: BITMAPINFOHEADER, then bottom-up rows of 32 bits a pixel (blue, green, red, alpha;
// not multiplied by alpha). The caller frees it. NULL when the file cannot be read, is damaged or
// cut short, or its header tells of more than mostPicturePixels: such a file is not decoded.
HGLOBAL PNGReadGraphicFile(const char *path);
}
