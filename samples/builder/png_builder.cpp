// PNG after its standard (ISO/IEC 15948), the pixels stored without compression (RFC 1950, 1951).
#include "samples/builder/pictures.h"

#include <algorithm>

static uint32_t Crc32(const Bytes &bytes)
{
    uint32_t crc = 0xffffffff;
    for (unsigned char byte : bytes) {
        crc ^= byte;
        for (int i = 0; i < 8; i++)
            crc = crc >> 1 ^ (crc & 1 ? 0xedb88320u : 0);
    }
    return ~crc;
}

static uint32_t Adler32(const Bytes &bytes)
{
    uint32_t low = 1;
    uint32_t high = 0;
    for (unsigned char byte : bytes) {
        low = (low + byte) % 65521;
        high = (high + low) % 65521;
    }
    return high << 16 | low;
}

static void AddBigU32(Bytes &bytes, uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        AddU8(bytes, value >> shift & 0xff);
}

static Bytes StoreInZlib(const Bytes &bytes)
{
    Bytes stream = {0x78, 0x01};
    size_t place = 0;
    do {
        size_t length = std::min<size_t>(bytes.size() - place, 65535);
        AddU8(stream, place + length == bytes.size());
        AddU16(stream, (unsigned)length);
        AddU16(stream, ~(unsigned)length & 0xffff);
        stream.insert(stream.end(), bytes.begin() + (ptrdiff_t)place,
                      bytes.begin() + (ptrdiff_t)(place + length));
        place += length;
    } while (place < bytes.size());
    AddBigU32(stream, Adler32(bytes));
    return stream;
}

Bytes MakePngChunk(std::string_view type, const Bytes &data)
{
    Bytes body;
    AddText(body, type);
    AddBytes(body, data);
    Bytes chunk;
    AddBigU32(chunk, (uint32_t)data.size());
    AddBytes(chunk, body);
    AddBigU32(chunk, Crc32(body));
    return chunk;
}

Bytes MakePngOf(uint32_t width, uint32_t height, int bitDepth, int colorType, int interlace,
                const Bytes &rows, const Bytes &before)
{
    Bytes header;
    AddBigU32(header, width);
    AddBigU32(header, height);
    for (int value : {bitDepth, colorType, 0, 0, interlace})
        AddU8(header, (unsigned)value);
    Bytes png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
    AddBytes(png, MakePngChunk("IHDR", header));
    AddBytes(png, before);
    AddBytes(png, MakePngChunk("IDAT", StoreInZlib(rows)));
    AddBytes(png, MakePngChunk("IEND", {}));
    return png;
}

Bytes MakePng(const Picture &picture)
{
    Bytes rows;
    for (int y = 0; y < picture.height; y++) {
        AddU8(rows, 0);
        for (int x = 0; x < picture.width; x++)
            for (int shift : {16, 8, 0, 24})
                AddU8(rows, picture.At(x, y) >> shift & 0xff);
    }
    return MakePngOf((uint32_t)picture.width, (uint32_t)picture.height, 8, 6, 0, rows);
}
