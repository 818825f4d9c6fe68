// Objects that every context starts with or that are always there.
#pragma once

#include "platform/win32/types.h"

enum class Stock {
    WhiteBrush,
    NullPen,
    BlackPen,
    SystemFont,
    Bitmap, // one black pixel
};

HGDIOBJ StockObject(Stock which);
