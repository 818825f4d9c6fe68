// The numbers and names that Windows gives to its resource types.
#pragma once

#include "platform/win32.h"

#define TYPE_CURSOR 1
#define TYPE_BITMAP 2
#define TYPE_ICON 3
#define TYPE_STRING 6
#define TYPE_FONT 8
#define TYPE_MESSAGE_TABLE 11
#define TYPE_CURSOR_GROUP 12
#define TYPE_ICON_GROUP 14
#define TYPE_VERSION 16
#define TYPE_MANIFEST 24

// The name without "RT_" ("GROUP_ICON"), NULL for a number that has none.
const char *StandardTypeName(DWORD type);
