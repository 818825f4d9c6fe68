#include "content/picture_info.h"

#include "content/dib.h"
#include "content/picture_group.h"
#include "platform/byte_reader.h"

#include <cstdint>
#include <cstring>

#define CORE_HEADER_SIZE 12
#define LONGEST_HEADER 124 // BITMAPV5HEADER
#define PNG_START_SIZE 26  // signature, and the first chunk up to the colour type

static const BYTE pngSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

static DWORD BigEndian(const BYTE *bytes)
{
    return (DWORD)bytes[0] << 24 | (DWORD)bytes[1] << 16 | (DWORD)bytes[2] << 8 | bytes[3];
}

static bool ReadPng(const BYTE *data, PictureInfo *info)
{
    // Samples a pixel of the colour types 0 to 6.
    static const BYTE samples[] = {1, 0, 3, 1, 2, 0, 4};
    const DWORD width = BigEndian(data + 16), height = BigEndian(data + 20);
    const BYTE depth = data[24], colorType = data[25];
    if (memcmp(data + 12, "IHDR", 4) != 0 || width > INT32_MAX || height > INT32_MAX ||
        colorType >= sizeof samples)
        return false;
    *info = {(LONG)width, (LONG)height, (DWORD)depth * samples[colorType], 1};
    return true;
}

bool ReadPictureInfo(const BYTE *data, size_t size, PictureKind kind, PictureInfo *info)
{
    *info = {};
    if (kind == PictureCursor) {
        if (size < CURSOR_HOT_SPOT_SIZE)
            return false;
        data += CURSOR_HOT_SPOT_SIZE;
        size -= CURSOR_HOT_SPOT_SIZE;
    }
    if (size >= PNG_START_SIZE && memcmp(data, pngSignature, sizeof pngSignature) == 0)
        return ReadPng(data, info);
    DibHeader header;
    if (!ReadDibHeader(data, (DWORD)size, &header) || header.width < 0 ||
        header.height == INT32_MIN ||
        (header.headerSize != CORE_HEADER_SIZE &&
         (header.headerSize < sizeof(BITMAPINFOHEADER) || header.headerSize > LONGEST_HEADER)))
        return false;
    const LONG height = header.height < 0 ? -header.height : header.height;
    *info = {header.width, kind == PictureBitmap ? height : height / 2, header.bitCount, 0};
    return true;
}
