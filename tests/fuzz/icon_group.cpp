// A group's choice and the picture that it names. The first byte gives the group's length; its bit
// 7 makes it a cursor's. The rest is the picture, whichever the group names of those there are.
#include "platform/native/user/pictures.h"
#include "tests/fuzz/fuzz.h"

#include <algorithm>

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    const bool isCursor = data[0] & 0x80;
    const uint8_t *picture = data + 1 + std::min<size_t>(data[0] & 0x7F, size - 1);
    const Bytes dib(picture, data + size);
    const HMODULE module = OpenModuleOf({{isCursor ? 12 : 14, 1, Bytes(data + 1, picture)},
                                         {isCursor ? 1 : 3, 1, dib},
                                         {isCursor ? 1 : 3, 0, dib}});
    Check(module != nullptr);
    ImagePixels pixels = {};
    if (ReadPicture(module, MAKEINTRESOURCEA(1), isCursor, &pixels)) {
        Check(pixels.width > 0 && pixels.width <= 256 && pixels.height <= 256);
        Check(pixels.pixels.size() == (size_t)pixels.width * (size_t)pixels.height);
    }
    FreeLibrary(module);
    return 0;
}
