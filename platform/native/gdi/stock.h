// Objects that every context starts with or that are always there. They live until the process
// ends; DeleteObject leaves them as they are.
#pragma once

#include "platform/win32/types.h"

enum class Stock {
    WhiteBrush,
    NullPen,
    BlackPen,
    SystemFont,
    Bitmap, // one black pixel, monochrome
};

// The handle of a stock object, which is made at the first call; nullptr when there is no room.
HGDIOBJ StockObject(Stock which);
