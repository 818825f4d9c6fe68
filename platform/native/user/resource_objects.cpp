// Texts and bitmaps out of a module's resources.
#include "platform/native/gdi/dib_decode.h"
#include "platform/win32/gdi.h"
#include "platform/win32/kernel.h"
#include "platform/win32/user.h"

#include <algorithm>
#include <vector>

namespace
{

// The bytes of a resource, and their number; nullptr when there is none.
const BYTE *FindBytes(HINSTANCE instance, LPCSTR name, LPCSTR type, size_t *size)
{
    HRSRC resource = FindResourceA(instance, name, type);
    *size = SizeofResource(instance, resource);
    return (const BYTE *)LockResource(LoadResource(instance, resource));
}

} // namespace

int WINAPI LoadStringA(HINSTANCE instance, UINT id, LPSTR text, int size)
{
    // Sixteen texts a block, each a length in code units and the units (STRINGTABLE).
    size_t total = 0;
    const BYTE *block =
        FindBytes(instance, MAKEINTRESOURCEA(id / 16 + 1), MAKEINTRESOURCEA(6), &total);
    if (text == nullptr || size <= 0)
        return 0;
    text[0] = 0;
    size_t at = 0;
    for (UINT skip = id % 16; block != nullptr && at + 2 <= total; skip--) {
        const size_t length = (size_t)block[at] | (size_t)block[at + 1] << 8;
        at += 2;
        if (length * 2 > total - at)
            return 0;
        if (skip > 0) {
            at += length * 2;
            continue;
        }
        std::vector<WCHAR> units(std::min(length, (size_t)size - 1));
        for (size_t i = 0; i < units.size(); i++)
            units[i] = (WCHAR)(block[at + 2 * i] | block[at + 2 * i + 1] << 8);
        const int kept = WideCharToMultiByte(CP_ACP, 0, units.data(), (int)units.size(), text, size,
                                             nullptr, nullptr);
        text[kept] = 0;
        return kept;
    }
    return 0;
}

HBITMAP WINAPI LoadBitmapA(HINSTANCE instance, LPCSTR name)
{
    size_t size = 0;
    const BYTE *bytes = FindBytes(instance, name, RT_BITMAP, &size);
    DibLayout layout;
    if (bytes == nullptr || !ReadDibLayout(bytes, size, &layout))
        return nullptr;
    const size_t left = size - layout.infoSize;
    Bitmap bitmap;
    if ((!layout.isRunLength && layout.pixelsSize > left) ||
        !DecodeDib(layout, bytes, bytes + layout.infoSize, left, &bitmap))
        return nullptr;
    return (HBITMAP)AddDrawingObject(std::move(bitmap));
}
