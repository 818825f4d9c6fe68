#include "platform/codec/decode.h"

#include <csetjmp>
#include <cstring>
#include <png.h>

namespace
{

// What decoding one file holds. libpng leaves by longjmp at the first fault, so all of it lies in
// a record outside the function that is left.
struct Decoding {
    const uint8_t *bytes; // of the file, from where it is read next
    size_t left;
    png_structp reader;
    png_infop info;
    HGLOBAL block;
    BYTE *pixels; // of the block, while it is locked
    jmp_buf fault;
};

} // namespace

[[noreturn]] static void OnFault(png_structp reader, png_const_charp)
{
    longjmp(static_cast<Decoding *>(png_get_error_ptr(reader))->fault, 1);
}

static void OnWarning(png_structp, png_const_charp)
{
}

static void ReadBytes(png_structp reader, png_bytep out, size_t size)
{
    Decoding *decoding = static_cast<Decoding *>(png_get_io_ptr(reader));
    if (size > decoding->left)
        png_error(reader, "cut short");
    memcpy(out, decoding->bytes, size);
    decoding->bytes += size;
    decoding->left -= size;
}

// Asks for 8-bit blue, green, red and alpha, whatever the file has.
static void AskForPixels(const Decoding *decoding)
{
    png_set_expand(decoding->reader);
    png_set_scale_16(decoding->reader);
    png_set_gray_to_rgb(decoding->reader);
    png_set_add_alpha(decoding->reader, 0xff, PNG_FILLER_AFTER);
    png_set_bgr(decoding->reader);
}

// Decodes into decoding->block; returns 0 when there is no memory or the picture is refused.
static int DecodePicture(Decoding *decoding)
{
    png_set_read_fn(decoding->reader, decoding, ReadBytes);
    // A chunk of little weight is taken with a wrong checksum too, as Windows takes it.
    png_set_crc_action(decoding->reader, PNG_CRC_DEFAULT, PNG_CRC_QUIET_USE);
    png_read_info(decoding->reader, decoding->info);
    DWORD height = png_get_image_height(decoding->reader, decoding->info);
    DWORD width = png_get_image_width(decoding->reader, decoding->info);
    decoding->block = MakeCodecDib(width, height);
    if (!decoding->block)
        return 0;
    AskForPixels(decoding);
    int passes = png_set_interlace_handling(decoding->reader);
    png_read_update_info(decoding->reader, decoding->info);
    decoding->pixels = static_cast<BYTE *>(GlobalLock(decoding->block));
    BYTE *rows = decoding->pixels + sizeof(BITMAPINFOHEADER);
    size_t stride = static_cast<size_t>(width) * 4;
    for (int pass = 0; pass < passes; ++pass)
        for (size_t y = 0; y < height; ++y)
            png_read_row(decoding->reader, rows + (height - 1 - y) * stride, nullptr);
    return 1;
}

static int DecodeOrFail(Decoding *decoding)
{
    if (setjmp(decoding->fault))
        return 0;
    return DecodePicture(decoding);
}

HGLOBAL DecodePng(const PngBytes &file)
{
    Decoding decoding = {};
    decoding.bytes = file.data();
    decoding.left = file.size();
    decoding.reader = png_create_read_struct(PNG_LIBPNG_VER_STRING, &decoding, OnFault, OnWarning);
    if (decoding.reader)
        decoding.info = png_create_info_struct(decoding.reader);
    int decoded = decoding.info && DecodeOrFail(&decoding);
    png_destroy_read_struct(&decoding.reader, &decoding.info, nullptr);
    if (decoding.pixels)
        GlobalUnlock(decoding.block);
    if (decoded)
        return decoding.block;
    GlobalFree(decoding.block);
    return nullptr;
}
