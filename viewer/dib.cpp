#include "viewer/dib.h"

#include "exe/byte_reader.h"

#define CORE_HEADER_SIZE 12
#define INFO_HEADER_SIZE 40

static DWORD FullColorCount(WORD bitCount)
{
    return bitCount <= 8 ? 1u << bitCount : 0;
}

int ReadDibHeader(const void *data, DWORD size, DibHeader *header)
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
        if (!bytes.failed)
            header->colorCount = FullColorCount(header->bitCount);
        return !bytes.failed;
    }
    header->width = (LONG)ReadU32(&bytes, 4);
    header->height = (LONG)ReadU32(&bytes, 8);
    header->bitCount = ReadU16(&bytes, 14);
    header->compression = ReadU32(&bytes, 16);
    header->colorCount = ReadU32(&bytes, 32);
    header->colorSize = 4;
    BytesAt(&bytes, 0, INFO_HEADER_SIZE);
    if (!bytes.failed && header->colorCount == 0)
        header->colorCount = FullColorCount(header->bitCount);
    return !bytes.failed;
}

unsigned long long DibPixelStart(const DibHeader *header)
{
    return header->headerSize + (unsigned long long)header->colorCount * header->colorSize;
}
