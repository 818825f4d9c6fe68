#include "viewer/png.h"

#include "content/dib.h"
#include "platform/files.h"
#include "viewer/dib_draw.h"
#include "viewer/graphic_file.h"

#include <cstdio>
#include <cstring>

static const BYTE signature[8] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};

int MakeTempFileName(char *out, const char *prefix, const char *extension, UINT unique)
{
    char folder[MAX_PATH];
    const DWORD length = GetTempPathA(sizeof folder, folder);
    if (length == 0 || length >= sizeof folder ||
        GetTempFileNameA(folder, prefix, unique, out) == 0)
        return 0;
    const size_t stem = strlen(out) - strlen(PathExtension(out));
    if (stem + strlen(extension) >= MAX_PATH)
        return 0;
    strcpy(out + stem, extension);
    return (int)strlen(out);
}

static bool WriteTempFile(const char *name, const void *data, DWORD size)
{
    FILE *file = fopen(name, "wb");
    if (file == nullptr)
        return false;
    const size_t written = fwrite(data, 1, size, file);
    const bool closed = fclose(file) == 0;
    return closed && written == size;
}

// Decodes a file and blends it over white. The decoded block goes before anything is drawn: a large
// picture need not lie in memory twice over. NULL on failure.
static HGLOBAL DecodeFlat(const char *name)
{
    HGLOBAL decoded = ReadGraphicFile(name);
    if (decoded == nullptr)
        return nullptr;
    HGLOBAL flat = nullptr;
    const void *dib = GlobalLock(decoded);
    if (dib != nullptr) {
        if (PictureFits(dib, (DWORD)GlobalSize(decoded), 0))
            flat = FlattenOverWhite(dib, false);
        GlobalUnlock(decoded);
    }
    GlobalFree(decoded);
    return flat;
}

static void DecodeAndDraw(HDC dc, const RECT *rect, const char *name, PngPicture *picture)
{
    HGLOBAL flat = DecodeFlat(name);
    if (flat == nullptr)
        return;
    GetDibInfo(flat, sizeof(BITMAPINFOHEADER), &picture->width, &picture->height, nullptr);
    picture->bitCount = 32;
    const POINT at = CenterPicture(rect, picture->width, picture->height);
    picture->y = at.y - rect->top;
    DrawDib(dc, at.x, at.y, flat, SRCCOPY);
    GlobalFree(flat);
}

static bool DrawLocked(HDC dc, const RECT *rect, const BYTE *data, DWORD size, PngPicture *picture)
{
    char name[MAX_PATH];
    if (size < sizeof signature || memcmp(data, signature, sizeof signature) != 0)
        return false;
    if (MakeTempFileName(name, "VLXP", ".png", 1) == 0)
        return false;
    const bool taken = WriteTempFile(name, data, size);
    if (taken)
        DecodeAndDraw(dc, rect, name, picture);
    remove(name);
    return taken;
}

bool DrawPngImage(HDC dc, const RECT *rect, HGLOBAL data, DWORD size, PngPicture *picture)
{
    *picture = {};
    const BYTE *locked = (const BYTE *)GlobalLock(data);
    if (locked == nullptr)
        return false;
    const bool taken = DrawLocked(dc, rect, locked, size, picture);
    GlobalUnlock(data);
    return taken;
}
