// The block that a picture is decoded into.
#pragma once

#include "platform/win32.h"

// Makes a movable block for a bottom-up DIB of 32 bits a pixel with its header filled in and its
// rows zero. The caller frees it. NULL when there is no memory, or the picture is empty or too
// large.
HGLOBAL MakeCodecDib(DWORD width, DWORD height);
