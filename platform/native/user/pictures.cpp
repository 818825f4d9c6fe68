#include "platform/native/user/pictures.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <strings.h>
#include <utility>

#include "platform/native/gdi/dib_decode.h"
#include "platform/native/handles.h"
#include "platform/native/kernel/module.h"
#include "platform/native/no_memory.h"
#include "platform/native/visible.h"
#include "platform/win32/kernel.h"
#include "platform/win32/user.h"

static HandleTable<ImagePixels, HandleKind::Icon> pictures;

namespace
{

// What was loaded before: the same name gives the same handle.
struct Loaded {
    HINSTANCE instance;
    std::string name; // "#" and the number for a number
    bool isCursor;
    HICON handle;
};

} // namespace

static std::vector<Loaded> loadedPictures;

// Pixels of an icon's edges, and of the picture that is looked for.
constexpr int iconSide = 32;

// The id of the group's picture whose width is nearest to the usual one, of equal ones that with
// the most bits; 0 when there is none. A group is three words, the last their count, and 14 bytes a
// picture: an icon's width is its first byte (0: 256), a cursor's its first word; the bits a pixel
// are the fourth word; the id is the last.
static WORD ChooseOfGroup(ByteReader group, bool isCursor)
{
    WORD best = 0;
    std::pair<int, int> bestMiss = {INT32_MAX, 0};
    const size_t count = ReadU16(&group, 4);
    for (size_t i = 0; i < count; ++i) {
        const size_t entry = 6 + i * 14;
        const BYTE *bytes = BytesAt(&group, entry, 14);
        if (!bytes)
            break;
        const int width = isCursor ? ReadU16(&group, entry) : bytes[0] != 0 ? bytes[0] : 256;
        const std::pair<int, int> miss = {std::abs(width - iconSide), -ReadU16(&group, entry + 6)};
        if (miss < bestMiss) {
            best = ReadU16(&group, entry + 12);
            bestMiss = miss;
        }
    }
    return best;
}

namespace
{

// Where the parts of a picture lie: a DIB of twice its height, whose lower half in the file is the
// colours, the upper a mask.
struct PictureParts {
    DibLayout layout; // of the colours alone
    size_t width;     // pixels
    size_t height;
    const BYTE *colors; // bottom-up, as the mask
    const BYTE *mask;   // a bit a pixel
    size_t maskStride;  // bytes from one row to the next
};

} // namespace

// Returns false when the bytes are no such DIB, lack a part, or are larger than 256 x 256 pixels.
static bool FindParts(const ByteReader &dib, PictureParts *parts)
{
    DibLayout &layout = parts->layout;
    if (!dib.data || !ReadDibLayout(dib.data, dib.total, &layout) || layout.isRunLength ||
        layout.isTopDown || layout.height % 2)
        return false;
    layout.height /= 2;
    layout.pixelsSize /= 2;
    parts->width = static_cast<size_t>(layout.width);
    parts->height = static_cast<size_t>(layout.height);
    parts->maskStride = (parts->width + 31) / 32 * 4;
    if (parts->width > 256 || parts->height > 256 ||
        layout.pixelsSize + parts->maskStride * parts->height > dib.total - layout.infoSize)
        return false;
    parts->colors = dib.data + layout.infoSize;
    parts->mask = parts->colors + layout.pixelsSize;
    return true;
}

// 32-bit colours bring their own transparency, unless all are transparent.
static bool HasAlpha(const PictureParts &parts)
{
    for (size_t i = 3; parts.layout.bits == 32 && i < parts.layout.pixelsSize; i += 4)
        if (parts.colors[i] != 0)
            return true;
    return false;
}

// A clear pixel has no colour: with one, it would invert what is behind it.
static uint32_t Blended(uint32_t color, uint32_t alpha)
{
    return alpha == 0 ? 0 : color | alpha << 24;
}

// A mask bit of 1 leaves the screen, combined with the colour.
static bool DecodePicture(const ByteReader &dib, ImagePixels *picture)
{
    PictureParts parts;
    Bitmap bitmap;
    if (!FindParts(dib, &parts) ||
        !DecodeDib(parts.layout, dib.data, parts.colors, parts.layout.pixelsSize, &bitmap))
        return false;
    const bool hasAlpha = HasAlpha(parts);
    picture->width = parts.layout.width;
    picture->height = parts.layout.height;
    picture->pixels.resize(parts.width * parts.height);
    for (size_t y = 0; y < parts.height; ++y) {
        const size_t row = parts.height - 1 - y;
        for (size_t x = 0; x < parts.width; ++x) {
            const bool isClear = parts.mask[row * parts.maskStride + x / 8] >> (7 - x % 8) & 1;
            const uint32_t color = bitmap.surface.pixels[y * bitmap.surface.stride + x] & 0xFFFFFF;
            picture->pixels[y * parts.width + x] =
                hasAlpha  ? Blended(color, parts.colors[(row * parts.width + x) * 4 + 3])
                : isClear ? color
                          : Blended(color, 255);
        }
    }
    return true;
}

// Makes an icon as large as every icon is.
static void FitIcon(ImagePixels *picture)
{
    ImagePixels fitted = {};
    fitted.width = fitted.height = iconSide;
    for (int y = 0; y < iconSide; ++y)
        for (int x = 0; x < iconSide; ++x) {
            const int64_t width = picture->width;
            const int64_t height = picture->height;
            const int64_t row = (2 * y + 1) * height / (2 * iconSide);
            const int64_t column = (2 * x + 1) * width / (2 * iconSide);
            fitted.pixels.push_back(picture->pixels[static_cast<size_t>(row * width + column)]);
        }
    *picture = std::move(fitted);
}

bool ReadPicture(HINSTANCE instance, LPCSTR name, bool isCursor, ImagePixels *picture)
{
    const WORD id = ChooseOfGroup(
        OpenResource(instance, name, isCursor ? RT_GROUP_CURSOR : RT_GROUP_ICON), isCursor);
    ByteReader dib = OpenResource(instance, MAKEINTRESOURCEA(id), isCursor ? RT_CURSOR : RT_ICON);
    if (isCursor && dib.total >= 4) {
        // A cursor's DIB comes after its hot spot.
        picture->hotX = ReadU16(&dib, 0);
        picture->hotY = ReadU16(&dib, 2);
        dib = OpenBytes(dib.data + 4, dib.total - 4);
    }
    if (!DecodePicture(dib, picture))
        return false;
    if (!isCursor)
        FitIcon(picture);
    return true;
}

// The desktop's information icon: a blue disc with a white letter i.
static void DrawInformationSign(ImagePixels *picture)
{
    constexpr int middle = iconSide / 2;
    picture->width = picture->height = iconSide;
    for (int y = 0; y < iconSide; ++y)
        for (int x = 0; x < iconSide; ++x) {
            const double distance = std::hypot(x + 0.5 - middle, y + 0.5 - middle);
            const double inside = std::clamp(15.5 - distance, 0.0, 1.0);
            const bool isDot = std::hypot(x + 0.5 - middle, y + 0.5 - 9.0) < 2.6;
            const bool isStem = x >= middle - 2 && x < middle + 2 && y >= 13 && y < 25;
            const uint32_t color = isDot || isStem ? 0xFFFFFF : 0x1E5AA8;
            picture->pixels.push_back(Blended(color, static_cast<uint32_t>(inside * 255)));
        }
}

static HICON LoadShared(HINSTANCE instance, LPCSTR name, bool isCursor)
{
    const std::string key =
        IS_INTRESOURCE(name) ? "#" + std::to_string(reinterpret_cast<uintptr_t>(name)) : name;
    for (const Loaded &loaded : loadedPictures)
        if (loaded.instance == instance && loaded.isCursor == isCursor &&
            strcasecmp(loaded.name.c_str(), key.c_str()) == 0)
            return loaded.handle;
    ImagePixels picture = {};
    if (!instance && isCursor && (name == IDC_ARROW || name == IDC_WAIT))
        picture.systemCursor = static_cast<int>(reinterpret_cast<uintptr_t>(name));
    else if (!instance && !isCursor && name == IDI_INFORMATION)
        DrawInformationSign(&picture);
    else if (!instance || !ReadPicture(instance, name, isCursor, &picture))
        return nullptr;
    loadedPictures.push_back({instance, key, isCursor, nullptr});
    const auto handle = static_cast<HICON>(pictures.Add(std::move(picture)));
    if (handle)
        loadedPictures.back().handle = handle;
    else
        loadedPictures.pop_back();
    return handle;
}

const ImagePixels *PictureOf(HICON handle)
{
    return pictures.Find(handle);
}

HICON WINAPI LoadIconA(HINSTANCE instance, LPCSTR name)
{
    return UnlessMemoryRunsOut<HICON>(nullptr, [=] { return LoadShared(instance, name, false); });
}

HCURSOR WINAPI LoadCursorA(HINSTANCE instance, LPCSTR name)
{
    return UnlessMemoryRunsOut<HCURSOR>(nullptr, [=] { return LoadShared(instance, name, true); });
}

// The cursor that shows: at first the arrow.
static HCURSOR &Shown()
{
    static HCURSOR shown = LoadCursorA(nullptr, IDC_ARROW);
    return shown;
}

HCURSOR WINAPI SetCursor(HCURSOR cursor)
{
    const HCURSOR before = std::exchange(Shown(), cursor);
    visible.cursorChanged(cursor);
    return before;
}

void NoteClassCursor(HCURSOR cursor)
{
    Shown() = cursor ? cursor : LoadCursorA(nullptr, IDC_ARROW);
}
