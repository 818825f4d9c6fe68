#include "content/dib.h"

#include "content/block.h"
#include "content/byte_writer.h"
#include "content/run_length.h"
#include "platform/byte_reader.h"
#include "platform/picture_limit.h"

#include <algorithm>
#include <climits>
#include <cstring>

#define CORE_HEADER_SIZE 12

typedef unsigned long long Bytes; // sizes from a file: sums and products pass 32 bits

static DWORD FullColorCount(WORD bitCount)
{
    return bitCount <= 8 ? 1u << bitCount : 0;
}

bool ReadDibHeader(const void *data, DWORD size, DibHeader *header)
{
    ByteReader bytes = OpenBytes(data, size);
    *header = {};
    header->headerSize = ReadU32(&bytes, 0);
    // Fields are read in the order in which they lie, so that those before the end are kept.
    if (header->headerSize == CORE_HEADER_SIZE) {
        header->width = ReadU16(&bytes, 4);
        header->height = ReadU16(&bytes, 6);
        header->bitCount = ReadU16(&bytes, 10);
        header->colorSize = 3;
        header->colorCount = FullColorCount(header->bitCount);
        return !bytes.failed;
    }
    header->width = (LONG)ReadU32(&bytes, 4);
    header->height = (LONG)ReadU32(&bytes, 8);
    header->bitCount = ReadU16(&bytes, 14);
    header->compression = ReadU32(&bytes, 16);
    header->imageSize = ReadU32(&bytes, 20);
    header->colorCount = ReadU32(&bytes, 32);
    header->colorSize = 4;
    BytesAt(&bytes, 0, sizeof(BITMAPINFOHEADER));
    if (header->colorCount == 0)
        header->colorCount = FullColorCount(header->bitCount);
    return !bytes.failed;
}

// The header of a block that is known to hold it whole.
static DibHeader HeaderOf(const void *dib)
{
    DibHeader header;
    ReadDibHeader(dib, sizeof(BITMAPINFOHEADER), &header);
    return header;
}

unsigned long long DibPixelStart(const DibHeader *header)
{
    return header->headerSize + (Bytes)header->colorCount * header->colorSize;
}

DWORD DibMaskSize(const DibHeader *header)
{
    return header->headerSize == sizeof(BITMAPINFOHEADER) && header->compression == BI_BITFIELDS
               ? 12
               : 0;
}

unsigned long long DibStride(LONG width, WORD bitCount)
{
    return ((Bytes)(DWORD)width * bitCount + 31) / 32 * 4;
}

static Bytes AbsoluteHeight(const DibHeader *header)
{
    return (Bytes)(header->height < 0 ? -(long long)header->height : header->height);
}

static bool IsDrawnBitCount(WORD bitCount)
{
    return bitCount == 1 || bitCount == 4 || bitCount == 8 || bitCount == 16 || bitCount == 24 ||
           bitCount == 32;
}

bool IsRunLength(const DibHeader *header)
{
    return header->compression == BI_RLE8 || header->compression == BI_RLE4;
}

// A few bytes of runs may tell of any size. Past the limit for compressed pictures they have to be
// so many that they could fill it: two bytes are at most 255 pixels.
static bool RunsMayFill(Bytes pixels, Bytes runs)
{
    return pixels <= mostDecodedPixels || pixels / 255 <= runs / 2;
}

static bool PixelsFit(const DibHeader *header, Bytes room, bool isIcon)
{
    const Bytes height = isIcon ? AbsoluteHeight(header) / 2 : AbsoluteHeight(header);
    if (height == 0 || (Bytes)header->width > mostPicturePixels / height)
        return false;
    if (isIcon && header->height < 0)
        return false;
    // Runs are drawn as far as they go.
    if (IsRunLength(header))
        return header->bitCount == (header->compression == BI_RLE8 ? 8 : 4) && header->height > 0 &&
               RunsMayFill(height * (Bytes)header->width, room);
    const bool hasFields = header->bitCount == 16 || header->bitCount == 32;
    if (header->compression != BI_RGB && !(header->compression == BI_BITFIELDS && hasFields))
        return false;
    Bytes row = DibStride(header->width, header->bitCount);
    if (isIcon && header->bitCount != 32)
        row += DibStride(header->width, 1);
    return height <= room / row;
}

bool PictureFits(const void *data, DWORD size, bool isIcon)
{
    DibHeader header;
    if (!ReadDibHeader(data, size, &header) || header.width <= 0 ||
        !IsDrawnBitCount(header.bitCount))
        return false;
    if (header.headerSize != CORE_HEADER_SIZE && header.headerSize < sizeof(BITMAPINFOHEADER))
        return false;
    if (isIcon)
        header.compression = BI_RGB;
    const Bytes start = DibPixelStart(&header) + DibMaskSize(&header);
    return start <= size && PixelsFit(&header, size - start, isIcon);
}

int GetDibInfo(HGLOBAL dib, DWORD size, LONG *width, LONG *height, WORD *bitCount)
{
    DibHeader header = {};
    const void *data = dib != nullptr ? GlobalLock(dib) : nullptr;
    const bool whole = data != nullptr && ReadDibHeader(data, size, &header);
    if (data != nullptr)
        GlobalUnlock(dib);
    if (!whole)
        header = {};
    if (width != nullptr)
        *width = header.width;
    if (height != nullptr)
        *height = (LONG)std::min(AbsoluteHeight(&header), (Bytes)INT_MAX);
    if (bitCount != nullptr)
        *bitCount = header.bitCount;
    return whole;
}

static void PutPlanes(BYTE *dib)
{
    PutU16(dib + (HeaderOf(dib).headerSize == CORE_HEADER_SIZE ? 8 : 12), 1);
}

const BYTE *CopyDibInfo(const void *dib, DWORD size, HGLOBAL *copy)
{
    static const BYTE endOfBitmap[] = {0, 1};
    const DibHeader header = HeaderOf(dib);
    const size_t start = (size_t)DibPixelStart(&header) + DibMaskSize(&header);
    size_t runs = size - start;
    if (header.imageSize != 0)
        runs = std::min(runs, (size_t)header.imageSize);
    runs = IsRunLength(&header) ? RunsLength((const BYTE *)dib + start, runs, header.bitCount) : 0;
    BYTE *info = (BYTE *)AllocateLocked(start + runs + sizeof endOfBitmap, copy);
    if (info == nullptr)
        return nullptr;
    memcpy(info, dib, start + runs);
    PutPlanes(info);
    if (IsRunLength(&header)) {
        memcpy(info + start + runs, endOfBitmap, sizeof endOfBitmap);
        PutU32(info + 20, (DWORD)(runs + sizeof endOfBitmap));
    }
    return info;
}

static LONG CenterLength(LONG from, LONG to, LONG length)
{
    const long long space = (long long)to - from - length;
    return from + (LONG)(space > 0 ? space / 2 : 0);
}

POINT CenterPicture(const RECT *rect, LONG width, LONG height)
{
    return {CenterLength(rect->left, rect->right, width),
            CenterLength(rect->top, rect->bottom, height)};
}

// Where the rows of a picture lie, so that a loop over its pixels reads the header once.
struct PixelRows {
    size_t start;  // bytes from the header's start
    size_t stride; // bytes
    LONG width;
    LONG height;
    WORD bitCount;
};

static PixelRows RowsOf(const void *dib, bool isIcon)
{
    const DibHeader header = HeaderOf(dib);
    return {(size_t)DibPixelStart(&header), (size_t)DibStride(header.width, header.bitCount),
            header.width, isIcon ? header.height / 2 : header.height, header.bitCount};
}

static bool HasPixel(const PixelRows *rows, LONG x, LONG y)
{
    return x >= 0 && x < rows->width && y >= 0 && y < rows->height;
}

static size_t RowOffset(const PixelRows *rows, LONG y)
{
    return rows->start + rows->stride * (size_t)(rows->height - 1 - y);
}

static DWORD ReadPixel(const BYTE *row, size_t x, WORD bitCount)
{
    const BYTE *p;
    switch (bitCount) {
    case 1: return (row[x / 8] & (0x80 >> x % 8)) != 0;
    case 4: return x % 2 == 0 ? row[x / 2] >> 4u : row[x / 2] & 0xFu;
    case 8: return row[x];
    case 24: p = row + 3 * x; return p[2] | (DWORD)p[1] << 8 | (DWORD)p[0] << 16 | 0xFF000000u;
    case 32:
        p = row + 4 * x;
        return p[2] | (DWORD)p[1] << 8 | (DWORD)p[0] << 16 | (DWORD)p[3] << 24;
    default: return NO_PIXEL;
    }
}

static BYTE WithBits(BYTE old, DWORD mask, DWORD bits)
{
    return (BYTE)((old & ~mask) | (bits & mask));
}

static void WritePixel(BYTE *row, size_t x, WORD bitCount, DWORD value)
{
    BYTE *p;
    switch (bitCount) {
    case 1: row[x / 8] = WithBits(row[x / 8], 0x80u >> x % 8, value != 0 ? 0xFF : 0); break;
    case 4:
        row[x / 2] =
            x % 2 == 0 ? WithBits(row[x / 2], 0xF0, value << 4) : WithBits(row[x / 2], 0x0F, value);
        break;
    case 8: row[x] = (BYTE)value; break;
    case 24:
    case 32:
        p = row + bitCount / 8 * x;
        p[2] = (BYTE)value;
        p[1] = (BYTE)(value >> 8);
        p[0] = (BYTE)(value >> 16);
        if (bitCount == 32)
            p[3] = (BYTE)(value >> 24);
        break;
    default: break;
    }
}

static DWORD GetPixelOf(const void *dib, LONG x, LONG y, bool isIcon)
{
    const PixelRows rows = RowsOf(dib, isIcon);
    if (!HasPixel(&rows, x, y))
        return NO_PIXEL;
    return ReadPixel((const BYTE *)dib + RowOffset(&rows, y), (size_t)x, rows.bitCount);
}

DWORD GetDibPixel(const void *dib, LONG x, LONG y)
{
    return GetPixelOf(dib, x, y, 0);
}

DWORD GetIconPixel(const void *icon, LONG x, LONG y)
{
    return GetPixelOf(icon, x, y, 1);
}

void SetDibPixel(void *dib, LONG x, LONG y, DWORD value)
{
    const PixelRows rows = RowsOf(dib, false);
    if (HasPixel(&rows, x, y))
        WritePixel((BYTE *)dib + RowOffset(&rows, y), (size_t)x, rows.bitCount, value);
}

// Makes a block as CreateDib does, and leaves it locked. Returns the address of its header, NULL on
// failure.
static BYTE *CreateLockedDib(LONG width, LONG height, const BYTE *palette, WORD bitCount,
                             HGLOBAL *dib)
{
    if (width <= 0 || height <= 0 || !IsDrawnBitCount(bitCount) ||
        (Bytes)width > mostPicturePixels / (Bytes)height)
        return nullptr;
    BITMAPINFOHEADER header = {};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = bitCount;
    header.biCompression = BI_RGB;
    header.biSizeImage = (DWORD)(DibStride(width, bitCount) * (Bytes)height);
    header.biClrUsed = header.biClrImportant = FullColorCount(bitCount);
    const SIZE_T size = sizeof header + 4 * header.biClrUsed + header.biSizeImage;
    BYTE *data = (BYTE *)AllocateLocked(size, dib);
    if (data == nullptr)
        return nullptr;
    memcpy(data, &header, sizeof header);
    BYTE *colors = data + sizeof header;
    for (DWORD i = 0; palette != nullptr && i < header.biClrUsed; i++) {
        colors[4 * i] = palette[3 * i + 2];
        colors[4 * i + 1] = palette[3 * i + 1];
        colors[4 * i + 2] = palette[3 * i];
    }
    return data;
}

HGLOBAL CreateDib(LONG width, LONG height, const BYTE *palette, WORD bitCount)
{
    HGLOBAL dib;
    if (CreateLockedDib(width, height, palette, bitCount, &dib) == nullptr)
        return nullptr;
    GlobalUnlock(dib);
    return dib;
}

DWORD BlendOverWhite(DWORD value)
{
    const DWORD alpha = value >> 24;
    const DWORD white = 255 - alpha;
    const DWORD red = (value & 0xFF) * alpha / 255 + white;
    const DWORD green = (value >> 8 & 0xFF) * alpha / 255 + white;
    const DWORD blue = (value >> 16 & 0xFF) * alpha / 255 + white;
    return red | green << 8 | blue << 16;
}

HGLOBAL FlattenOverWhite(const void *source, bool isIcon)
{
    const PixelRows from = RowsOf(source, isIcon);
    HGLOBAL dib;
    BYTE *data = CreateLockedDib(from.width, from.height, nullptr, 24, &dib);
    if (data == nullptr)
        return nullptr;
    const PixelRows to = RowsOf(data, false);
    for (LONG y = 0; y < from.height; y++) {
        const BYTE *fromRow = (const BYTE *)source + RowOffset(&from, y);
        BYTE *toRow = data + RowOffset(&to, y);
        for (size_t x = 0; x < (size_t)from.width; x++)
            WritePixel(toRow, x, to.bitCount, BlendOverWhite(ReadPixel(fromRow, x, from.bitCount)));
    }
    GlobalUnlock(dib);
    return dib;
}

HGLOBAL CopyIconMask(const void *icon)
{
    static const BYTE blackAndWhite[] = {0, 0, 0, 255, 255, 255};
    const PixelRows from = RowsOf(icon, true);
    HGLOBAL dib;
    BYTE *data = CreateLockedDib(from.width, from.height, blackAndWhite, 1, &dib);
    if (data == nullptr)
        return nullptr;
    const PixelRows to = RowsOf(data, false);
    const size_t mask = from.start + from.stride * (size_t)from.height;
    memcpy(data + to.start, (const BYTE *)icon + mask, to.stride * (size_t)to.height);
    GlobalUnlock(dib);
    return dib;
}

HGLOBAL CopyIconColors(const void *icon)
{
    const PixelRows from = RowsOf(icon, true);
    const size_t size = from.start + from.stride * (size_t)from.height;
    HGLOBAL dib;
    BYTE *data = (BYTE *)AllocateLocked(size, &dib);
    if (data == nullptr)
        return nullptr;
    memcpy(data, icon, size);
    if (HeaderOf(icon).headerSize == CORE_HEADER_SIZE)
        PutU16(data + 6, (WORD)from.height);
    else {
        PutU32(data + 8, (DWORD)from.height);
        PutU32(data + 16, BI_RGB);
    }
    GlobalUnlock(dib);
    return dib;
}
