#include "platform/codec/png_file.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <zlib.h>

#include "platform/picture_limit.h"

constexpr uint8_t signature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr size_t headerEnd = 33; // the signature and the first chunk
constexpr size_t chunkRoom = 12; // length, type and checksum of a chunk
constexpr uint32_t mostSide = 0x7FFFFFFF;

namespace
{

struct ColorType {
    uint8_t number;
    uint32_t channels;
    uint32_t depths; // the sum of the bits a channel that it may have, each a power of 2
};

// The pixels that an interlaced file's pass has: from (x, y) on, each step.
struct Pass {
    uint32_t x, y;
    uint32_t stepX, stepY;
};

} // namespace

constexpr ColorType colorTypes[] = {
    {0, 1, 1 + 2 + 4 + 8 + 16},
    {2, 3, 8 + 16},
    {3, 1, 1 + 2 + 4 + 8},
    {4, 2, 8 + 16},
    {6, 4, 8 + 16},
};

constexpr Pass passes[] = {
    {0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
    {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2},
};
constexpr Pass wholePass = {0, 0, 1, 1};

static uint32_t BigU32(const uint8_t *bytes)
{
    return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

static void AddBigU32(PngBytes *bytes, uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes->push_back(static_cast<uint8_t>(value >> shift));
}

static void AddChunk(PngBytes *file, const char *type, const uint8_t *data, size_t size)
{
    AddBigU32(file, static_cast<uint32_t>(size));
    const size_t start = file->size();
    file->insert(file->end(), type, type + 4);
    file->insert(file->end(), data, data + size);
    AddBigU32(file, static_cast<uint32_t>(crc32_z(0, file->data() + start, file->size() - start)));
}

bool ReadPngHeader(const PngBytes &file, PngHeader *header)
{
    const uint8_t *chunk = file.data() + sizeof signature;
    if (file.size() < headerEnd || memcmp(file.data(), signature, sizeof signature) != 0 ||
        BigU32(chunk) != 13 || memcmp(chunk + 4, "IHDR", 4) != 0)
        return false;
    *header = {BigU32(chunk + 8), BigU32(chunk + 12), 0, chunk[20] == 1};
    const uint32_t depth = chunk[16];
    for (const ColorType &type : colorTypes)
        if (type.number == chunk[17] && std::has_single_bit(depth) && (type.depths & depth) != 0)
            header->bits = type.channels * depth;
    return header->bits != 0 && header->width - 1 < mostSide && header->height - 1 < mostSide;
}

// Bytes of a pass's rows, each with the byte in front that tells its filter.
static uint64_t PassSize(const PngHeader &header, const Pass &pass)
{
    if (header.width <= pass.x || header.height <= pass.y)
        return 0;
    const uint64_t width = (header.width - pass.x - 1) / pass.stepX + 1;
    const uint64_t height = (header.height - pass.y - 1) / pass.stepY + 1;
    return (1 + (width * header.bits + 7) / 8) * height;
}

static uint64_t RowsSize(const PngHeader &header)
{
    if (!header.isInterlaced)
        return PassSize(header, wholePass);
    uint64_t size = 0;
    for (const Pass &pass : passes)
        size += PassSize(header, pass);
    return size;
}

// Copies the chunks in front of the pixels, and joins the packed pixels as far as they go.
static void TakeChunks(const PngBytes &file, PngBytes *before, PngBytes *packed)
{
    size_t at = sizeof signature;
    before->assign(signature, signature + sizeof signature);
    while (file.size() - at >= 8) {
        const size_t left = file.size() - at - 8;
        const size_t size = BigU32(file.data() + at);
        const uint8_t *type = file.data() + at + 4;
        const bool isPixels = memcmp(type, "IDAT", 4) == 0;
        if (isPixels)
            packed->insert(packed->end(), type + 4, type + 4 + std::min(size, left));
        else if (packed->empty() && size <= left)
            AddChunk(before, reinterpret_cast<const char *>(type), type + 4, size);
        if ((!isPixels && !packed->empty()) || left < 4 || size > left - 4)
            return;
        at += chunkRoom + size;
    }
}

// Unpacks that many bytes of rows, whatever follows them. Empty when there are fewer.
static PngBytes UnpackRows(const PngBytes &packed, uint64_t size)
{
    constexpr size_t zlibHeader = 2;
    constexpr uint64_t mostRatio = 1032; // of this compression: one that tells of more lies
    if (packed.size() <= zlibHeader || size > packed.size() * mostRatio)
        return {};
    PngBytes rows(static_cast<size_t>(size));
    z_stream stream = {};
    // Without the checksum behind them.
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
        return {};
    stream.next_in = const_cast<uint8_t *>(packed.data()) + zlibHeader;
    stream.avail_in = static_cast<uInt>(packed.size() - zlibHeader);
    stream.next_out = rows.data();
    stream.avail_out = static_cast<uInt>(rows.size());
    inflate(&stream, Z_SYNC_FLUSH);
    inflateEnd(&stream);
    return stream.avail_out == 0 ? rows : PngBytes();
}

// Puts pixels and end behind what is in front of them.
static PngBytes WithRows(PngBytes file, const PngBytes &rows)
{
    uLongf size = compressBound(static_cast<uLong>(rows.size()));
    PngBytes packed(size);
    if (compress2(packed.data(), &size, rows.data(), static_cast<uLong>(rows.size()),
                  Z_BEST_SPEED) != Z_OK)
        return {};
    AddChunk(&file, "IDAT", packed.data(), size);
    AddChunk(&file, "IEND", nullptr, 0);
    return file;
}

PngBytes MendPng(const PngBytes &file)
{
    PngHeader header;
    if (!ReadPngHeader(file, &header) || header.width > mostPicturePixels / header.height)
        return {};
    PngBytes before;
    PngBytes packed;
    TakeChunks(file, &before, &packed);
    const PngBytes rows = UnpackRows(packed, RowsSize(header));
    return rows.empty() ? PngBytes() : WithRows(std::move(before), rows);
}

PngBytes MakePngFile(uint32_t width, uint32_t height, bool hasAlpha, const PngBytes &rows)
{
    PngBytes file(signature, signature + sizeof signature);
    PngBytes header;
    AddBigU32(&header, width);
    AddBigU32(&header, height);
    const uint8_t depth = 8, colorType = hasAlpha ? 6 : 2;
    header.insert(header.end(), {depth, colorType, 0, 0, 0});
    AddChunk(&file, "IHDR", header.data(), header.size());
    return WithRows(std::move(file), rows);
}
