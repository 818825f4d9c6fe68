// The About box.
#pragma once

#include "platform/win32.h"

// Shows the About box over the owner window until OK is pressed; returns 1. The picture down its
// left edge is the host module's bitmap 9004; without it the strip stays empty.
INT_PTR ShowAboutBox(HWND owner);
