#include "platform/codec/decode.h"

#include <algorithm>
#include <wincodec.h>

namespace
{

// What decoding one file holds open.
struct Decoding {
    HRESULT com;
    IWICImagingFactory *factory;
    IWICStream *stream;
    IWICBitmapDecoder *decoder;
    IWICBitmapFrameDecode *frame;
    IWICFormatConverter *converter;
    UINT width; // pixels
    UINT height;
};

} // namespace

template <class Interface> static void Release(Interface *object)
{
    if (object)
        object->Release();
}

static void EndDecoding(Decoding *decoding)
{
    Release(decoding->converter);
    Release(decoding->frame);
    Release(decoding->decoder);
    Release(decoding->stream);
    Release(decoding->factory);
    if (SUCCEEDED(decoding->com))
        CoUninitialize();
}

// Opens the file, which must stay, and reads its picture's size, no pixel yet. EndDecoding is due
// whatever the result.
static int BeginDecoding(const PngBytes &file, Decoding *decoding)
{
    *decoding = {};
    // fails when the caller uses another threading model, which serves as well
    decoding->com = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    return SUCCEEDED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                      IID_IWICImagingFactory,
                                      reinterpret_cast<void **>(&decoding->factory))) &&
           SUCCEEDED(decoding->factory->CreateStream(&decoding->stream)) &&
           SUCCEEDED(decoding->stream->InitializeFromMemory(const_cast<BYTE *>(file.data()),
                                                            static_cast<DWORD>(file.size()))) &&
           SUCCEEDED(decoding->factory->CreateDecoder(GUID_ContainerFormatPng, nullptr,
                                                      &decoding->decoder)) &&
           SUCCEEDED(
               decoding->decoder->Initialize(decoding->stream, WICDecodeMetadataCacheOnDemand)) &&
           SUCCEEDED(decoding->decoder->GetFrame(0, &decoding->frame)) &&
           SUCCEEDED(decoding->frame->GetSize(&decoding->width, &decoding->height));
}

static void TurnRows(BYTE *rows, size_t stride, size_t height)
{
    for (size_t top = 0; top < height / 2; ++top)
        std::swap_ranges(rows + top * stride, rows + (top + 1) * stride,
                         rows + (height - 1 - top) * stride);
}

static int DecodeRows(Decoding *decoding, BYTE *rows)
{
    UINT stride = decoding->width * 4;
    if (FAILED(decoding->factory->CreateFormatConverter(&decoding->converter)) ||
        FAILED(decoding->converter->Initialize(decoding->frame, GUID_WICPixelFormat32bppBGRA,
                                               WICBitmapDitherTypeNone, nullptr, 0,
                                               WICBitmapPaletteTypeCustom)) ||
        FAILED(decoding->converter->CopyPixels(nullptr, stride, stride * decoding->height, rows)))
        return 0;
    TurnRows(rows, stride, decoding->height);
    return 1;
}

HGLOBAL DecodePng(const PngBytes &file)
{
    Decoding decoding;
    HGLOBAL block = nullptr;
    if (BeginDecoding(file, &decoding))
        block = MakeCodecDib(decoding.width, decoding.height);
    int decoded = 0;
    if (block) {
        decoded = DecodeRows(&decoding,
                             static_cast<BYTE *>(GlobalLock(block)) + sizeof(BITMAPINFOHEADER));
        GlobalUnlock(block);
    }
    EndDecoding(&decoding);
    if (decoded)
        return block;
    GlobalFree(block);
    return nullptr;
}
