// The names that Windows gives to its resource types.
#pragma once

#include "platform/win32.h"

// The name without "RT_" ("GROUP_ICON"), NULL for a number that has none.
const char *StandardTypeName(DWORD type);
