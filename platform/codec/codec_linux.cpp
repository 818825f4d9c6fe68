#include "platform/codec/codec.h"

#include "platform/codec/codec_dib.h"

#include <cstdio>
#include <png.h>

// Decodes the pixels of an image whose header has been read.
static HGLOBAL ReadPixels(png_image *image)
{
    HGLOBAL block = MakeCodecDib(image->width, image->height);
    if (!block)
        return nullptr;
    BYTE *rows = (BYTE *)GlobalLock(block) + sizeof(BITMAPINFOHEADER);
    image->format = PNG_FORMAT_BGRA;
    // 16-bit samples are on the same scale as 8-bit ones
    image->flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
    // a negative stride: the top row goes last
    int decoded = png_image_finish_read(image, nullptr, rows,
                                        -(png_int_32)PNG_IMAGE_ROW_STRIDE(*image), nullptr);
    GlobalUnlock(block);
    if (decoded)
        return block;
    GlobalFree(block);
    return nullptr;
}

HGLOBAL PNGReadGraphicFile(const char *path)
{
    FILE *file = fopen(path, "rb");
    if (!file)
        return nullptr;
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    HGLOBAL block = nullptr;
    if (png_image_begin_read_from_stdio(&image, file))
        block = ReadPixels(&image);
    png_image_free(&image);
    fclose(file);
    return block;
}
