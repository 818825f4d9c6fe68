#include "viewer/pane.h"

#include "content/dib.h"
#include "content/string_block.h"
#include "exe/catalog.h"
#include "exe/categories.h"
#include "program/globals.h"
#include "viewer/dib_draw.h"
#include "viewer/png.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>

#define LINE_ADVANCE 13
#define LEFT_MARGIN 4
#define BYTES_A_LINE 16

// y is the picture's top edge. Its height comes from the file and can be anything.
static void DrawInformationLine(HDC dc, const RECT *rect, long long y, LONG width, LONG height,
                                WORD bitCount, const char *suffix)
{
    char text[80];
    snprintf(text, sizeof text, "%d X %d, %d bits%s", (int)width, (int)height, (int)bitCount,
             suffix);
    const LONG top = (LONG)std::clamp(y + height + 8, (long long)INT_MIN, (long long)INT_MAX - 32);
    RECT line = {rect->left, top, rect->right, top + 32};
    HGDIOBJ oldFont = SelectObject(dc, globals.interfaceFont);
    SetTextColor(dc, GetSysColor(COLOR_BTNSHADOW));
    SetBkMode(dc, TRANSPARENT);
    DrawTextA(dc, text, -1, &line, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    if (oldFont != nullptr)
        SelectObject(dc, oldFont);
}

static void PaintBitmap(HDC dc, const RECT *rect, const ResourceEntry *entry)
{
    LONG width;
    LONG height;
    WORD bitCount;
    GetDibInfo(entry->data, entry->size, &width, &height, &bitCount);
    const POINT at = CenterPicture(rect, width, height);
    const void *data = GlobalLock(entry->data);
    if (data != nullptr) {
        if (PictureFits(data, entry->size, false))
            DrawDibAt(dc, at.x, at.y, data, entry->size, SRCCOPY);
        GlobalUnlock(entry->data);
    }
    DrawInformationLine(dc, rect, at.y, width, height, bitCount, "");
}

static void PaintIconImage(HDC dc, const RECT *rect, const void *icon, DWORD size)
{
    DibHeader header;
    if (!ReadDibHeader(icon, size, &header))
        header = {};
    // By the stored height, mask rows included.
    const POINT at = CenterPicture(rect, header.width, header.height);
    LONG width = header.width;
    LONG height = header.height / 2;
    WORD bitCount = header.bitCount;
    if (PictureFits(icon, size, true))
        DrawIconImage(dc, at.x, at.y, icon, &width, &height, &bitCount);
    DrawInformationLine(dc, rect, at.y, width, height, bitCount, "");
}

static void PaintIcon(HDC dc, const RECT *rect, const ResourceEntry *entry)
{
    PngPicture png;
    if (DrawPngImage(dc, rect, entry->data, entry->size, &png)) {
        DrawInformationLine(dc, rect, (long long)rect->top + png.y, png.width, png.height,
                            png.bitCount, ", PNG Resource");
        return;
    }
    const void *icon = GlobalLock(entry->data);
    if (icon == nullptr)
        return;
    PaintIconImage(dc, rect, icon, entry->size);
    GlobalUnlock(entry->data);
}

static void DrawStrings(HDC dc, const RECT *rect, const BYTE *data, DWORD size)
{
    StringBlock block = {data, size, 0};
    char text[STRING_TEXT_LENGTH + 1];
    int y = 0;
    while (y <= rect->bottom - rect->top && NextString(&block, text)) {
        EscapeControlChars(text);
        TextOutA(dc, rect->left + LEFT_MARGIN, rect->top + y, text, (int)strlen(text));
        y += LINE_ADVANCE;
    }
}

static bool IsLetter(BYTE cell)
{
    return (cell >= 'A' && cell <= 'Z') || (cell >= 'a' && cell <= 'z');
}

// Writes the line of up to 16 bytes: hexadecimal groups, then a cell for each byte.
static void FormatHexLine(char *line, const BYTE *data, DWORD count)
{
    memset(line, ' ', 3 * BYTES_A_LINE + 1);
    for (DWORD i = 0; i < count; i++) {
        char group[4];
        snprintf(group, sizeof group, "%.2X%c", data[i], i == 7 ? '-' : ' ');
        memcpy(line + 3 * i, group, 3);
        line[3 * BYTES_A_LINE + 1 + i] = IsLetter(data[i]) ? (char)data[i] : '.';
    }
    line[3 * BYTES_A_LINE + 1 + count] = 0;
}

static void DrawBytes(HDC dc, const RECT *rect, const BYTE *data, DWORD size)
{
    char line[4 * BYTES_A_LINE + 2];
    int y = 2;
    // The first line is drawn in a pane of any height.
    for (DWORD row = 0; row < size && (row == 0 || y <= rect->bottom - rect->top);) {
        const DWORD count = std::min(size - row, (DWORD)BYTES_A_LINE);
        FormatHexLine(line, data + row, count);
        TextOutA(dc, rect->left + LEFT_MARGIN, rect->top + y, line, (int)strlen(line));
        y += LINE_ADVANCE;
        row += count;
    }
}

static void PaintText(HDC dc, const RECT *rect, const ResourceEntry *entry,
                      void (*draw)(HDC, const RECT *, const BYTE *, DWORD))
{
    const BYTE *data = (const BYTE *)GlobalLock(entry->data);
    if (data == nullptr)
        return;
    HFONT font = CreateFontA(13, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Courier New");
    HGDIOBJ oldFont = SelectObject(dc, font);
    SetBkMode(dc, TRANSPARENT);
    draw(dc, rect, data, entry->size);
    if (oldFont != nullptr)
        SelectObject(dc, oldFont);
    if (font != nullptr)
        DeleteObject(font);
    GlobalUnlock(entry->data);
}

static void PaintStringTable(HDC dc, const RECT *rect, const ResourceEntry *entry)
{
    PaintText(dc, rect, entry, DrawStrings);
}

static void PaintBinaryData(HDC dc, const RECT *rect, const ResourceEntry *entry)
{
    PaintText(dc, rect, entry, DrawBytes);
}

static constexpr struct {
    ResourceCategory category;
    void (*paint)(HDC dc, const RECT *rect, const ResourceEntry *entry);
} views[] = {
    {CategoryBitmap, PaintBitmap},
    {CategoryIcon, PaintIcon},
    {CategoryString, PaintStringTable},
    {CategoryBinary, PaintBinaryData},
};
static_assert(CoversCategories(views), "each category has a view");

int PaintResource(HDC dc, const RECT *rect, HGLOBAL entries, LONG count, LONG index)
{
    ResourceEntry entry;
    if (entries == nullptr || count <= 0 || index < 0 || index >= count ||
        !GetEntry(entries, &entry, index))
        return 0;
    for (const auto &view : views)
        if (view.category == entry.category)
            view.paint(dc, rect, &entry);
    return 1;
}
