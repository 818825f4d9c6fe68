#include "platform/codec/codec.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "platform/codec/decode.h"
#include "platform/picture_limit.h"

namespace
{

struct FileCloser {
    void operator()(FILE *file) const
    {
        fclose(file);
    }
};

// A block that is locked as long as this lives.
struct LockedBlock {
    HGLOBAL block;
    const uint8_t *bytes;

    explicit LockedBlock(HGLOBAL handle)
        : block(handle), bytes(static_cast<const uint8_t *>(GlobalLock(handle)))
    {
    }
    ~LockedBlock()
    {
        if (bytes)
            GlobalUnlock(block);
    }
    LockedBlock(const LockedBlock &) = delete;
    LockedBlock &operator=(const LockedBlock &) = delete;
};

} // namespace

// Reads a file's first bytes, at most `most`. Empty when there is none.
static PngBytes ReadStart(const char *path, size_t most)
{
    PngBytes bytes;
    const std::unique_ptr<FILE, FileCloser> file(fopen(path, "rb"));
    for (size_t had = 1; file && had > 0 && bytes.size() < most;) {
        const size_t before = bytes.size();
        const size_t asked = std::min<size_t>(most - before, 65536);
        bytes.resize(before + asked);
        had = fread(bytes.data() + before, 1, asked, file.get());
        bytes.resize(before + had);
    }
    return bytes;
}

static bool WriteWhole(const char *path, const PngBytes &bytes)
{
    FILE *file = fopen(path, "wb");
    if (!file)
        return false;
    const bool isWritten = fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    if (fclose(file) == 0 && isWritten)
        return true;
    remove(path);
    return false;
}

// The rows of a locked block, from the top as a PNG file has them. Empty when it holds no such DIB.
static PngBytes RowsOf(const uint8_t *dib, size_t size, BITMAPINFOHEADER *header)
{
    if (!dib || size < sizeof *header)
        return {};
    memcpy(header, dib, sizeof *header);
    const size_t channels = header->biBitCount / 8u;
    if (header->biSize != sizeof *header || header->biWidth <= 0 || header->biHeight <= 0 ||
        (header->biBitCount != 24 && header->biBitCount != 32) || header->biCompression != BI_RGB ||
        header->biClrUsed != 0)
        return {};
    const auto width = static_cast<uint64_t>(header->biWidth);
    const auto height = static_cast<uint64_t>(header->biHeight);
    const uint64_t stride = (width * channels + 3) / 4 * 4;
    if (height > (size - sizeof *header) / stride)
        return {};
    PngBytes rows;
    rows.reserve(static_cast<size_t>((1 + width * channels) * height));
    for (uint64_t y = height; y-- > 0;) {
        rows.push_back(0);
        const uint8_t *pixel = dib + sizeof *header + y * stride;
        for (uint64_t x = 0; x < width; ++x, pixel += channels) {
            rows.insert(rows.end(), {pixel[2], pixel[1], pixel[0]});
            if (channels == 4)
                rows.push_back(pixel[3]);
        }
    }
    return rows;
}

static PngBytes EncodeDib(HGLOBAL dib)
{
    BITMAPINFOHEADER header = {};
    const LockedBlock locked(dib);
    const PngBytes rows = RowsOf(locked.bytes, GlobalSize(dib), &header);
    if (rows.empty())
        return {};
    return MakePngFile(static_cast<uint32_t>(header.biWidth),
                       static_cast<uint32_t>(header.biHeight), header.biBitCount == 32, rows);
}

// Callers know no exceptions: without memory there is no answer.

HGLOBAL PNGGetFileInformation(const char *path)
try {
    PngHeader header;
    if (!ReadPngHeader(ReadStart(path, 64), &header))
        return nullptr;
    return MakeDibBlock(header.width, header.height, header.bits, 0);
} catch (const std::bad_alloc &) {
    return nullptr;
}

HGLOBAL PNGReadGraphicFile(const char *path)
try {
    return DecodeOrMendPng(ReadStart(path, SIZE_MAX));
} catch (const std::bad_alloc &) {
    return nullptr;
}

int PNGWriteGraphicFile(const char *path, HGLOBAL dib)
try {
    const PngBytes file = EncodeDib(dib);
    return !file.empty() && WriteWhole(path, file);
} catch (const std::bad_alloc &) {
    return 0;
}
