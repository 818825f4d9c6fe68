// Files that are dropped on a window, as the display reports them.
#pragma once

#include <string>
#include <vector>

#include "platform/win32/types.h"

// Whether a window would be told of files dropped on it now.
bool TakesDrops(HWND window);

// Files were dropped on a window: WM_DROPFILES is posted, unless it takes none. Paths are the
// system's own bytes; the place is in the client area, in logical pixels.
void ReportDrop(HWND window, POINT place, const std::vector<std::string> &paths);
