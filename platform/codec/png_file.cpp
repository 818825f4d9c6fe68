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
constexpr size_t pieceSize = 16384; // of what passes through without being kept

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

// Unpacks pixels, without looking for the checksum behind them.
struct Unpacker {
    z_stream stream = {};
    bool isReady = inflateInit2(&stream, -MAX_WBITS) == Z_OK;

    Unpacker() = default;
    Unpacker(const Unpacker &) = delete;
    Unpacker &operator=(const Unpacker &) = delete;
    ~Unpacker()
    {
        inflateEnd(&stream); // does nothing to one that is not ready
    }
};

struct Packer {
    z_stream stream = {};
    // A smaller table of what was met takes half the memory, as much time and makes files of the
    // same size.
    static constexpr int memoryLevel = 7;
    bool isReady = deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, MAX_WBITS, memoryLevel,
                                Z_DEFAULT_STRATEGY) == Z_OK;

    Packer() = default;
    Packer(const Packer &) = delete;
    Packer &operator=(const Packer &) = delete;
    ~Packer()
    {
        deflateEnd(&stream);
    }
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

// Hands bytes to the packer, adds what it makes of them to packed, and ends the packing when asked.
static void Pack(Packer *packer, const uint8_t *bytes, size_t size, bool isEnd, PngBytes *packed)
{
    uint8_t piece[pieceSize];
    z_stream *stream = &packer->stream;
    stream->next_in = const_cast<uint8_t *>(bytes);
    stream->avail_in = static_cast<uInt>(size);
    do {
        stream->next_out = piece;
        stream->avail_out = sizeof piece;
        deflate(stream, isEnd ? Z_FINISH : Z_NO_FLUSH);
        packed->insert(packed->end(), piece, piece + sizeof piece - stream->avail_out);
    } while (stream->avail_out == 0);
}

// Packs anew that many bytes of rows, whatever follows them. Empty when there are fewer.
static PngBytes Repack(const PngBytes &packed, uint64_t size)
{
    constexpr size_t zlibHeader = 2;
    constexpr uint64_t mostRatio = 1032; // of this compression: one that tells of more lies
    if (packed.size() <= zlibHeader || size > packed.size() * mostRatio)
        return {};
    Unpacker unpacker;
    Packer packer;
    PngBytes repacked;
    uint8_t piece[pieceSize];
    unpacker.stream.next_in = const_cast<uint8_t *>(packed.data()) + zlibHeader;
    unpacker.stream.avail_in = static_cast<uInt>(packed.size() - zlibHeader);
    while (unpacker.isReady && packer.isReady && size > 0) {
        unpacker.stream.next_out = piece;
        unpacker.stream.avail_out = static_cast<uInt>(std::min<uint64_t>(size, sizeof piece));
        inflate(&unpacker.stream, Z_SYNC_FLUSH);
        const auto got = static_cast<size_t>(unpacker.stream.next_out - piece);
        if (got == 0)
            return {};
        size -= got;
        Pack(&packer, piece, got, size == 0, &repacked);
    }
    return repacked;
}

// Puts packed pixels and end behind what is in front of them.
static PngBytes WithPixels(PngBytes file, const PngBytes &packed)
{
    AddChunk(&file, "IDAT", packed.data(), packed.size());
    AddChunk(&file, "IEND", nullptr, 0);
    return file;
}

PngBytes MendPng(const PngBytes &file)
{
    PngHeader header;
    if (!ReadPngHeader(file, &header) || header.width > mostDecodedPixels / header.height)
        return {};
    PngBytes before;
    PngBytes packed;
    TakeChunks(file, &before, &packed);
    const PngBytes pixels = Repack(packed, RowsSize(header));
    return pixels.empty() ? PngBytes() : WithPixels(std::move(before), pixels);
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
    Packer packer;
    PngBytes packed;
    if (!packer.isReady)
        return {};
    Pack(&packer, rows.data(), rows.size(), true, &packed);
    return WithPixels(std::move(file), packed);
}
