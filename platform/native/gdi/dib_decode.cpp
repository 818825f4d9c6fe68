#include "platform/native/gdi/dib_decode.h"

#include <algorithm>
#include <climits>

#include "platform/byte_reader.h"
#include "platform/color_channel.h"

constexpr uint32_t coreHeaderSize = 12;
constexpr uint32_t infoHeaderSize = 40;
constexpr uint32_t masksInHeaderSize = 52; // from this length on the masks belong to the header

namespace
{

enum Compression : uint32_t { Rgb, RunLength8, RunLength4, BitFields };

} // namespace

static size_t RowSize(const DibLayout &layout)
{
    return (static_cast<size_t>(layout.width) * static_cast<size_t>(layout.bits) + 31) / 32 * 4;
}

static void ReadCoreHeader(ByteReader *info, DibLayout *layout)
{
    layout->width = ReadU16(info, 4);
    layout->height = ReadU16(info, 6);
    layout->planes = ReadU16(info, 8);
    layout->bits = ReadU16(info, 10);
    layout->entrySize = 3;
    if (layout->bits <= 8)
        layout->tableEntries = size_t{1} << layout->bits;
}

// Returns the compression.
static uint32_t ReadInfoHeader(ByteReader *info, DibLayout *layout)
{
    const auto height = static_cast<int32_t>(ReadU32(info, 8));
    const size_t used = ReadU32(info, 32);
    layout->width = static_cast<int32_t>(ReadU32(info, 4));
    layout->isTopDown = height < 0;
    layout->height = height == INT_MIN ? 0 : std::abs(height);
    layout->planes = ReadU16(info, 12);
    layout->bits = ReadU16(info, 14);
    layout->entrySize = 4;
    layout->tableEntries = used != 0 || layout->bits > 8 ? used : size_t{1} << layout->bits;
    return ReadU32(info, 16);
}

static bool IsDrawable(const DibLayout &layout, uint32_t compression)
{
    const int bits = layout.bits;
    if (layout.width <= 0 || layout.height <= 0 || layout.planes == 0)
        return false;
    switch (compression) {
    case Rgb: return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    case RunLength8: return bits == 8 && !layout.isTopDown;
    case RunLength4: return bits == 4 && !layout.isTopDown;
    case BitFields: return bits == 16 || bits == 32;
    default: return false;
    }
}

static void ReadColorTable(const DibLayout &layout, const uint8_t *info, uint32_t table[256])
{
    std::fill(table, table + 256, 0);
    const size_t count = std::min(layout.tableEntries, static_cast<size_t>(1) << layout.bits);
    for (size_t i = 0; i < count; ++i) {
        const uint8_t *entry = info + layout.tableOffset + i * layout.entrySize;
        table[i] =
            static_cast<uint32_t>(entry[2]) << 16 | static_cast<uint32_t>(entry[1]) << 8 | entry[0];
    }
}

static void DecodeIndexedRow(const DibLayout &layout, const uint32_t *table, const uint8_t *row,
                             uint32_t *out)
{
    const unsigned bits = static_cast<unsigned>(layout.bits);
    const unsigned perByte = 8 / bits;
    const unsigned mask = (1u << bits) - 1;
    for (int x = 0; x < layout.width; ++x) {
        const unsigned place = (perByte - 1 - static_cast<unsigned>(x) % perByte) * bits;
        out[x] = table[row[static_cast<unsigned>(x) / perByte] >> place & mask];
    }
}

static void DecodeDirectRow(const DibLayout &layout, const uint8_t *row, uint32_t *out)
{
    if (layout.bits == 24) {
        for (int x = 0; x < layout.width; ++x, row += 3)
            out[x] =
                static_cast<uint32_t>(row[2]) << 16 | static_cast<uint32_t>(row[1]) << 8 | row[0];
        return;
    }
    const uint32_t *masks = layout.masks;
    const bool isPlain = masks[0] == 0xFF0000 && masks[1] == 0xFF00 && masks[2] == 0xFF;
    const int size = layout.bits / 8;
    for (int x = 0; x < layout.width; ++x, row += size) {
        uint32_t pixel = row[0] | uint32_t{row[1]} << 8;
        if (size == 4)
            pixel |= uint32_t{row[2]} << 16 | uint32_t{row[3]} << 24;
        out[x] = isPlain ? pixel & 0xFFFFFF
                         : ColorChannel(pixel, masks[0]) << 16 |
                               ColorChannel(pixel, masks[1]) << 8 | ColorChannel(pixel, masks[2]);
    }
}

namespace
{

// The place that run lengths have reached; rows count from the bottom.
struct RunPen {
    const PixelSurface *surface;
    const uint32_t *table;
    int x;
    int row;
};

} // namespace

static void PutRunPixel(RunPen *pen, unsigned index)
{
    if (pen->x < pen->surface->width) {
        const size_t y = static_cast<size_t>(pen->surface->height - 1 - pen->row);
        pen->surface->pixels[y * pen->surface->stride + static_cast<size_t>(pen->x)] =
            pen->table[index];
        ++pen->x;
    }
}

// The i-th index of a run of bytes: a byte each of 8 bits, else the high nibble first.
static unsigned RunIndex(int bits, const uint8_t *bytes, unsigned i)
{
    if (bits == 8)
        return bytes[i];
    return i % 2 == 0 ? bytes[i / 2] >> 4 : bytes[i / 2] & 15u;
}

static void DecodeRunLengths(const DibLayout &layout, const uint32_t *table, const uint8_t *bytes,
                             size_t size, const PixelSurface &surface)
{
    const unsigned endOfLine = 0, endOfBitmap = 1, delta = 2;
    RunPen pen = {&surface, table, 0, 0};
    size_t at = 0;
    while (pen.row < surface.height && at + 2 <= size) {
        const unsigned count = bytes[at];
        const unsigned code = bytes[at + 1];
        at += 2;
        if (count > 0) {
            const uint8_t repeated[] = {static_cast<uint8_t>(code)};
            for (unsigned i = 0; i < count; ++i)
                PutRunPixel(&pen, layout.bits == 8 ? code : RunIndex(4, repeated, i % 2));
        } else if (code == endOfLine) {
            pen.x = 0;
            ++pen.row;
        } else if (code == endOfBitmap) {
            return;
        } else if (code == delta) {
            if (at + 2 > size)
                return;
            pen.x = std::min(pen.x + bytes[at], surface.width);
            pen.row += bytes[at + 1];
            at += 2;
        } else {
            const size_t length = layout.bits == 8 ? code : (code + 1) / 2;
            if (length > size - at)
                return;
            for (unsigned i = 0; i < code; ++i)
                PutRunPixel(&pen, RunIndex(layout.bits, bytes + at, i));
            at += std::min((length + 1) / 2 * 2, size - at); // padded to whole words
        }
    }
}

bool ReadDibLayout(const void *info, size_t available, DibLayout *layout)
{
    ByteReader bytes = OpenBytes(info, available);
    *layout = {};
    const uint32_t headerSize = ReadU32(&bytes, 0);
    if ((headerSize != coreHeaderSize && headerSize < infoHeaderSize) ||
        !BytesAt(&bytes, 0, headerSize))
        return false;
    uint32_t compression = Rgb;
    if (headerSize == coreHeaderSize)
        ReadCoreHeader(&bytes, layout);
    else
        compression = ReadInfoHeader(&bytes, layout);
    if (!IsDrawable(*layout, compression))
        return false;
    layout->isRunLength = compression == RunLength8 || compression == RunLength4;
    layout->tableOffset = headerSize;
    if (compression == BitFields) {
        if (headerSize < masksInHeaderSize)
            layout->tableOffset += 12;
        for (size_t i = 0; i < 3; ++i)
            layout->masks[i] = ReadU32(&bytes, infoHeaderSize + 4 * i);
        if (layout->masks[0] == 0 || layout->masks[1] == 0 || layout->masks[2] == 0)
            return false;
    } else {
        const bool isFive = layout->bits == 16; // five bits a channel
        layout->masks[0] = isFive ? 0x7C00 : 0xFF0000;
        layout->masks[1] = isFive ? 0x03E0 : 0xFF00;
        layout->masks[2] = isFive ? 0x001F : 0xFF;
    }
    layout->infoSize = layout->tableOffset + layout->tableEntries * layout->entrySize;
    layout->pixelsSize = layout->isRunLength
                             ? ReadU32(&bytes, 20)
                             : RowSize(*layout) * static_cast<size_t>(layout->height);
    return layout->infoSize <= available && layout->pixelsSize != 0;
}

bool DecodeDib(const DibLayout &layout, const void *info, const void *pixels, size_t pixelsSize,
               Bitmap *bitmap)
{
    if (!MakeBitmap(layout.width, layout.height, false, bitmap))
        return false;
    const uint8_t *bytes = static_cast<const uint8_t *>(pixels);
    uint32_t table[256];
    if (layout.bits <= 8)
        ReadColorTable(layout, static_cast<const uint8_t *>(info), table);
    if (layout.isRunLength) {
        DecodeRunLengths(layout, table, bytes, pixelsSize, bitmap->surface);
        return true;
    }
    for (int y = 0; y < layout.height; ++y) {
        const int stored = layout.isTopDown ? y : layout.height - 1 - y;
        const uint8_t *row = bytes + RowSize(layout) * static_cast<size_t>(stored);
        uint32_t *out = bitmap->surface.pixels + bitmap->surface.stride * static_cast<size_t>(y);
        if (layout.bits <= 8)
            DecodeIndexedRow(layout, table, row, out);
        else
            DecodeDirectRow(layout, row, out);
    }
    return true;
}
