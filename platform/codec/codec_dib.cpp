#include "platform/codec/codec_dib.h"

#include "platform/picture_limit.h"

HGLOBAL MakeCodecDib(DWORD width, DWORD height)
{
    if (width == 0 || height == 0 || width > mostPicturePixels / height)
        return nullptr;
    DWORD rowsSize = width * height * 4;
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(BITMAPINFOHEADER) + rowsSize);
    if (!block)
        return nullptr;
    BITMAPINFOHEADER *header = static_cast<BITMAPINFOHEADER *>(GlobalLock(block));
    header->biSize = sizeof *header;
    header->biWidth = static_cast<LONG>(width);
    header->biHeight = static_cast<LONG>(height);
    header->biPlanes = 1;
    header->biBitCount = 32;
    header->biCompression = BI_RGB;
    header->biSizeImage = rowsSize;
    GlobalUnlock(block);
    return block;
}
