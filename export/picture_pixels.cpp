#include "export/picture_pixels.h"

#include "content/dib.h"
#include "content/run_length.h"
#include "platform/byte_reader.h"
#include "platform/color_channel.h"
#include "platform/picture_limit.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#define OPAQUE_ALPHA 0xFF000000u

// A picture that is known to lie in its block.
struct PictureSource {
    const BYTE *bytes;
    DWORD size;
    DibHeader header;
    LONG height;      // rows of colours
    bool isTopDown;   // how they are stored
    DWORD masks[3];   // red, green and blue of 16 bits and of bit fields; else 0
    size_t start;     // of the colours
    size_t stride;    // bytes a row
    size_t maskStart; // of an icon's mask; 0 when there is none
    size_t maskStride;
};

static DWORD ColorOf(const BYTE *blue, DWORD alpha)
{
    return blue[2] | (DWORD)blue[1] << 8 | (DWORD)blue[0] << 16 | alpha;
}

static DWORD IndexedColor(const PictureSource *source, DWORD index)
{
    const DibHeader *header = &source->header;
    if (index >= header->colorCount)
        return OPAQUE_ALPHA;
    return ColorOf(source->bytes + header->headerSize + (size_t)index * header->colorSize,
                   OPAQUE_ALPHA);
}

static DWORD MaskedColor(const PictureSource *source, DWORD pixel)
{
    const DWORD *masks = source->masks;
    return ColorChannel(pixel, masks[0]) | ColorChannel(pixel, masks[1]) << 8 |
           ColorChannel(pixel, masks[2]) << 16;
}

static DWORD ReadColor(const PictureSource *source, const BYTE *row, size_t x)
{
    const BYTE *p;
    switch (source->header.bitCount) {
    case 1: return IndexedColor(source, row[x / 8] >> (7 - x % 8) & 1u);
    case 4: return IndexedColor(source, x % 2 == 0 ? row[x / 2] >> 4u : row[x / 2] & 15u);
    case 8: return IndexedColor(source, row[x]);
    case 16: p = row + 2 * x; return MaskedColor(source, p[0] | (DWORD)p[1] << 8) | OPAQUE_ALPHA;
    case 24: return ColorOf(row + 3 * x, OPAQUE_ALPHA);
    default:
        p = row + 4 * x;
        return MaskedColor(source,
                           p[0] | (DWORD)p[1] << 8 | (DWORD)p[2] << 16 | (DWORD)p[3] << 24) |
               OPAQUE_ALPHA;
    }
}

// Rows count from the top.
static const BYTE *RowAt(const PictureSource *source, LONG y)
{
    const LONG stored = source->isTopDown ? y : source->height - 1 - y;
    return source->bytes + source->start + source->stride * (size_t)stored;
}

// Blue, green, red and alpha, a byte each: what every PNG is decoded to, so it is worth its own
// loop.
static void ReadPlainRow(const BYTE *row, size_t width, DWORD *values)
{
    for (size_t x = 0; x < width; x++, row += 4)
        values[x] = ColorOf(row, (DWORD)row[3] << 24);
}

static void ReadColors(const PictureSource *source, PicturePixels *pixels)
{
    const size_t width = (size_t)source->header.width;
    pixels->values.resize(width * (size_t)source->height);
    DWORD *value = pixels->values.data();
    const bool isPlain = source->header.bitCount == 32 && source->masks[0] == 0;
    for (LONG y = 0; y < source->height; y++, value += width) {
        const BYTE *row = RowAt(source, y);
        if (isPlain)
            ReadPlainRow(row, width, value);
        else
            for (size_t x = 0; x < width; x++)
                value[x] = ReadColor(source, row, x);
    }
}

static void ReadRuns(const PictureSource *source, PicturePixels *pixels)
{
    const size_t width = (size_t)source->header.width, height = (size_t)source->height;
    std::vector<WORD> indexes(width * height);
    UnpackRuns(source->bytes + source->start, source->size - source->start, source->header.bitCount,
               source->header.width, source->height, indexes.data());
    pixels->values.reserve(indexes.size());
    for (size_t y = height; y > 0; y--)
        for (size_t x = 0; x < width; x++)
            pixels->values.push_back(IndexedColor(source, indexes[(y - 1) * width + x]));
}

static void ClearMasked(const PictureSource *source, PicturePixels *pixels)
{
    DWORD *value = pixels->values.data();
    for (LONG y = source->height - 1; y >= 0; y--) {
        const BYTE *row = source->bytes + source->maskStart + source->maskStride * (size_t)y;
        for (LONG x = 0; x < source->header.width; x++, value++)
            if ((row[x / 8] & 0x80 >> x % 8) != 0)
                *value = 0;
    }
}

static bool HasAlpha(const PicturePixels *pixels)
{
    for (const DWORD value : pixels->values)
        if ((value & OPAQUE_ALPHA) != 0)
            return true;
    return false;
}

// The mask of an icon image, when it lies in the block: of 32 bits it need not be there.
static void FindMask(PictureSource *source)
{
    source->maskStride = (size_t)DibStride(source->header.width, 1);
    const size_t start = source->start + source->stride * (size_t)source->height;
    if (source->maskStride * (size_t)source->height <= source->size - start)
        source->maskStart = start;
}

// Where the masks of bit fields lie, whether the header holds them or they follow it.
#define MASKS_START 40

static void FindMasks(PictureSource *source)
{
    static const DWORD fiveBits[] = {0x7C00, 0x03E0, 0x001F};
    ByteReader reader = OpenBytes(source->bytes, source->size);
    const bool isFields = source->header.compression == BI_BITFIELDS;
    for (DWORD i = 0; i < 3; i++)
        source->masks[i] = isFields                        ? ReadU32(&reader, MASKS_START + 4 * i)
                           : source->header.bitCount == 16 ? fiveBits[i]
                                                           : 0;
}

static bool FindPicture(const BYTE *bytes, DWORD size, bool isIcon, PictureSource *source)
{
    if (!PictureFits(bytes, size, isIcon) || !ReadDibHeader(bytes, size, &source->header))
        return false;
    DibHeader *header = &source->header;
    if (isIcon) // whose pixels are never compressed
        header->compression = BI_RGB;
    source->bytes = bytes;
    source->size = size;
    source->isTopDown = header->height < 0;
    source->height = source->isTopDown ? -header->height : header->height;
    if (isIcon)
        source->height /= 2;
    source->start = (size_t)DibPixelStart(header) + DibMaskSize(header);
    source->stride = (size_t)DibStride(header->width, header->bitCount);
    FindMasks(source);
    if (isIcon)
        FindMask(source);
    return (DWORD)header->width <= mostDecodedPixels / (DWORD)source->height;
}

static bool ReadPicture(const BYTE *bytes, DWORD size, bool isIcon, PictureSource *source,
                        PicturePixels *pixels)
{
    *pixels = {};
    if (!FindPicture(bytes, size, isIcon, source))
        return false;
    pixels->width = source->header.width;
    pixels->height = source->height;
    if (IsRunLength(&source->header))
        ReadRuns(source, pixels);
    else
        ReadColors(source, pixels);
    return true;
}

static void MakeOpaque(PicturePixels *pixels)
{
    for (DWORD &value : pixels->values)
        value |= OPAQUE_ALPHA;
}

bool ReadIconPixels(const BYTE *icon, DWORD size, PicturePixels *pixels)
{
    PictureSource source = {};
    if (!ReadPicture(icon, size, 1, &source, pixels))
        return false;
    if (source.header.bitCount == 32 && HasAlpha(pixels))
        return true;
    MakeOpaque(pixels);
    if (source.maskStart != 0)
        ClearMasked(&source, pixels);
    return true;
}

bool ReadBitmapPixels(const BYTE *bitmap, DWORD size, PicturePixels *pixels)
{
    PictureSource source = {};
    if (!ReadPicture(bitmap, size, 0, &source, pixels))
        return false;
    if (!HasAlpha(pixels))
        MakeOpaque(pixels);
    return true;
}

bool ReadDecodedPixels(const BYTE *dib, DWORD size, PicturePixels *pixels)
{
    PictureSource source = {};
    DibHeader header;
    *pixels = {};
    return ReadDibHeader(dib, size, &header) && header.compression == BI_RGB && header.height > 0 &&
           header.bitCount == 32 && ReadPicture(dib, size, 0, &source, pixels);
}

// The source pixels along one side that each target pixel covers, and the share of each: both sides
// are laid on a line of sourceLength * targetLength parts.
struct ShrinkSide {
    std::vector<size_t> from;     // the first source pixel of each target pixel
    std::vector<size_t> ends;     // of its shares
    std::vector<uint64_t> shares; // all, target pixel by target pixel
};

static ShrinkSide MeasureSide(uint64_t sourceLength, uint64_t targetLength)
{
    ShrinkSide side;
    for (uint64_t to = 0; to < targetLength; to++) {
        uint64_t from = to * sourceLength / targetLength;
        side.from.push_back((size_t)from);
        for (; from * targetLength < (to + 1) * sourceLength; from++)
            side.shares.push_back(std::min((from + 1) * targetLength, (to + 1) * sourceLength) -
                                  std::max(from * targetLength, to * sourceLength));
        side.ends.push_back(side.shares.size());
    }
    return side;
}

// Sums of a target pixel, weighted by share and alpha.
struct ShrinkSums {
    uint64_t red, green, blue, alpha;
};

// Adds what a row of source pixels gives to a row of target pixels.
static void AddRow(const DWORD *row, uint64_t rowShare, const ShrinkSide *across,
                   std::vector<ShrinkSums> *target)
{
    size_t i = 0;
    for (size_t to = 0; to < target->size(); to++) {
        const DWORD *value = row + across->from[to];
        ShrinkSums sums = (*target)[to];
        for (; i < across->ends[to]; i++, value++) {
            const uint64_t weight = across->shares[i] * rowShare * (*value >> 24);
            sums.alpha += weight;
            sums.red += weight * (*value & 0xFF);
            sums.green += weight * (*value >> 8 & 0xFF);
            sums.blue += weight * (*value >> 16 & 0xFF);
        }
        (*target)[to] = sums;
    }
}

static DWORD AverageOf(const ShrinkSums *sums, uint64_t area)
{
    const uint64_t alpha = sums->alpha;
    if (alpha == 0)
        return 0;
    return (DWORD)((alpha + area / 2) / area) << 24 |
           (DWORD)((sums->blue + alpha / 2) / alpha) << 16 |
           (DWORD)((sums->green + alpha / 2) / alpha) << 8 |
           (DWORD)((sums->red + alpha / 2) / alpha);
}

void ShrinkPixels(PicturePixels *pixels, LONG side)
{
    const LONG longest = std::max(pixels->width, pixels->height);
    if (longest <= side)
        return;
    PicturePixels target = {};
    target.width = std::max<LONG>(1, (LONG)((int64_t)pixels->width * side / longest));
    target.height = std::max<LONG>(1, (LONG)((int64_t)pixels->height * side / longest));
    const size_t width = (size_t)pixels->width;
    const uint64_t area = (uint64_t)width * (uint64_t)pixels->height;
    const ShrinkSide across = MeasureSide(width, (uint64_t)target.width);
    const ShrinkSide down = MeasureSide((uint64_t)pixels->height, (uint64_t)target.height);
    std::vector<ShrinkSums> sums;
    target.values.reserve((size_t)target.width * (size_t)target.height);
    size_t i = 0;
    for (size_t y = 0; y < (size_t)target.height; y++) {
        const DWORD *row = pixels->values.data() + down.from[y] * width;
        sums.assign((size_t)target.width, ShrinkSums());
        for (; i < down.ends[y]; i++, row += width)
            AddRow(row, down.shares[i], &across, &sums);
        for (const ShrinkSums &pixel : sums)
            target.values.push_back(AverageOf(&pixel, area));
    }
    *pixels = std::move(target);
}
