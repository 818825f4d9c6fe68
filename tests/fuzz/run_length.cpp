// Run lengths, in a picture whose size the first bytes give: the bits a pixel, width and height.
#include "content/run_length.h"
#include "exe/categories.h"
#include "export/picture_pixels.h"
#include "tests/fuzz/fuzz.h"

static Bytes PictureOf(int bits, unsigned width, unsigned height, const Bytes &runs)
{
    Bytes dib;
    AddU32(dib, 40);
    AddU32(dib, width);
    AddU32(dib, height);
    AddU16(dib, 1);
    AddU16(dib, (unsigned)bits);
    AddU32(dib, bits == 8 ? BI_RLE8 : BI_RLE4);
    AddU32(dib, (uint32_t)runs.size());
    dib.resize(40 + ((size_t)4 << bits));
    AddBytes(dib, runs);
    return dib;
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 3)
        return 0;
    const WORD bits = data[0] & 1 ? 4 : 8;
    // Of its own, so that a read past its end is found out.
    const Bytes runs(data + 3, data + size);
    const size_t length = RunsLength(runs.data(), runs.size(), bits);
    Check(length <= runs.size());
    Check(RunsLength(runs.data(), length, bits) == length);
    const Bytes dib = PictureOf(bits, data[1], data[2], runs);
    PicturePixels pixels;
    if (ReadBitmapPixels(dib.data(), (DWORD)dib.size(), &pixels))
        Check(pixels.values.size() == (size_t)data[1] * data[2]);
    ShowAndSave(CategoryBitmap, dib.data(), dib.size());
    return 0;
}
