#include "platform/native/gdi/stock.h"

#include "platform/native/gdi/objects.h"
#include "platform/win32/gdi.h"

namespace
{

struct SystemColor {
    int index;
    COLORREF color;
};

} // namespace

// The light colours of Windows 10.
constexpr SystemColor systemColors[] = {
    {COLOR_WINDOW, RGB(255, 255, 255)},   {COLOR_WINDOWTEXT, RGB(0, 0, 0)},
    {COLOR_HIGHLIGHT, RGB(0, 120, 215)},  {COLOR_HIGHLIGHTTEXT, RGB(255, 255, 255)},
    {COLOR_BTNFACE, RGB(240, 240, 240)},  {COLOR_BTNSHADOW, RGB(160, 160, 160)},
    {COLOR_GRAYTEXT, RGB(109, 109, 109)}, {COLOR_BTNTEXT, RGB(0, 0, 0)},
};

static HGDIOBJ MakeStock(Stock which)
{
    switch (which) {
    case Stock::WhiteBrush: return AddDrawingObject(Brush{0xFFFFFF, {}}, true);
    case Stock::NullPen: return AddDrawingObject(Pen{true}, true);
    case Stock::BlackPen: return AddDrawingObject(Pen{false}, true);
    case Stock::SystemFont: return AddDrawingObject(Font{16, 700, "System"}, true);
    case Stock::Bitmap: break;
    }
    Bitmap bitmap{};
    if (!MakeBitmap(1, 1, true, &bitmap))
        return nullptr;
    return AddDrawingObject(std::move(bitmap), true);
}

HGDIOBJ StockObject(Stock which)
{
    static HGDIOBJ objects[static_cast<size_t>(Stock::Bitmap) + 1];
    HGDIOBJ &object = objects[static_cast<size_t>(which)];
    if (!object)
        object = MakeStock(which);
    return object;
}

HGDIOBJ WINAPI GetStockObject(int number)
{
    switch (number) {
    case WHITE_BRUSH: return StockObject(Stock::WhiteBrush);
    case NULL_PEN: return StockObject(Stock::NullPen);
    default: return nullptr;
    }
}

DWORD WINAPI GetSysColor(int index)
{
    for (const SystemColor &row : systemColors)
        if (row.index == index)
            return row.color;
    return 0;
}

HBRUSH WINAPI GetSysColorBrush(int index)
{
    static HBRUSH brushes[std::size(systemColors)];
    for (size_t i = 0; i < std::size(systemColors); ++i) {
        if (systemColors[i].index != index)
            continue;
        if (!brushes[i])
            brushes[i] = static_cast<HBRUSH>(
                AddDrawingObject(Brush{SwapRedBlue(systemColors[i].color), {}}, true));
        return brushes[i];
    }
    return nullptr;
}
