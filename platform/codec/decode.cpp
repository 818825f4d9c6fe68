#include "platform/codec/decode.h"

#include <cstring>

#include "platform/picture_limit.h"

HGLOBAL MakeDibBlock(DWORD width, DWORD height, DWORD bits, DWORD rowsSize)
{
    BITMAPINFOHEADER header = {};
    header.biSize = sizeof header;
    header.biWidth = static_cast<LONG>(width);
    header.biHeight = static_cast<LONG>(height);
    header.biPlanes = 1;
    header.biBitCount = static_cast<WORD>(bits);
    header.biCompression = BI_RGB;
    header.biSizeImage = rowsSize;
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof header + size_t{rowsSize});
    if (!block)
        return nullptr;
    memcpy(GlobalLock(block), &header, sizeof header);
    GlobalUnlock(block);
    return block;
}

HGLOBAL MakeCodecDib(DWORD width, DWORD height)
{
    if (width == 0 || height == 0 || width > mostDecodedPixels / height)
        return nullptr;
    return MakeDibBlock(width, height, 32, width * height * 4);
}

HGLOBAL DecodeOrMendPng(const PngBytes &file)
{
    HGLOBAL block = DecodePng(file);
    return block ? block : DecodePng(MendPng(file));
}
