// Texts and bitmaps out of a module's resources.
#include <algorithm>
#include <cstring>

#include "platform/native/gdi/dib_decode.h"
#include "platform/native/kernel/code_page.h"
#include "platform/native/kernel/module.h"
#include "platform/native/no_memory.h"
#include "platform/win32/kernel.h"
#include "platform/win32/user.h"

int WINAPI LoadStringA(HINSTANCE instance, UINT id, LPSTR text, int size)
{
    // Sixteen texts a block, each a length in code units and the units (STRINGTABLE).
    ByteReader block = OpenResource(instance, MAKEINTRESOURCEA(id / 16 + 1), RT_STRING);
    if (!text || size <= 0)
        return 0;
    text[0] = 0;
    for (UINT skipped = 0; skipped < id % 16; ++skipped)
        SkipBytes(&block, size_t{TakeU16(&block)} * 2);
    const size_t length = TakeU16(&block);
    const BYTE *units = BytesAt(&block, block.position, length * 2);
    if (!units)
        return 0;
    std::string kept;
    DoesMemorySuffice(
        [&] { kept = TextOfUnits(units, std::min(length, static_cast<size_t>(size) - 1)); });
    std::memcpy(text, kept.c_str(), kept.size() + 1);
    return static_cast<int>(kept.size());
}

HBITMAP WINAPI LoadBitmapA(HINSTANCE instance, LPCSTR name)
{
    const ByteReader dib = OpenResource(instance, name, RT_BITMAP);
    DibLayout layout;
    if (!dib.data || !ReadDibLayout(dib.data, dib.total, &layout))
        return nullptr;
    const size_t left = dib.total - layout.infoSize;
    Bitmap bitmap;
    if ((!layout.isRunLength && layout.pixelsSize > left) ||
        !DecodeDib(layout, dib.data, dib.data + layout.infoSize, left, &bitmap))
        return nullptr;
    return static_cast<HBITMAP>(AddDrawingObject(std::move(bitmap)));
}
