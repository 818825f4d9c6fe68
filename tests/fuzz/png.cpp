// The codec: what it decodes it writes, and that decodes to the same.
#include "platform/codec/codec.h"
#include "tests/fuzz/fuzz.h"

#include <cstring>
#include <sys/mman.h>

// A second file, for what is written.
static const char *WrittenFile()
{
    static const std::string path =
        "/proc/self/fd/" + std::to_string(memfd_create("written", MFD_CLOEXEC));
    return path.c_str();
}

static void CheckSame(HGLOBAL a, HGLOBAL b)
{
    Check(a != nullptr && b != nullptr && GlobalSize(a) == GlobalSize(b));
    Check(memcmp(GlobalLock(a), GlobalLock(b), GlobalSize(a)) == 0);
    GlobalUnlock(a);
    GlobalUnlock(b);
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const char *path = FileOf(data, size);
    GlobalFree(PNGGetFileInformation(path));
    HGLOBAL decoded = PNGReadGraphicFile(path);
    if (decoded == nullptr)
        return 0;
    // Packing takes longest; large pictures hold nothing that a small one does not.
    if (GlobalSize(decoded) < 65536) {
        Check(PNGWriteGraphicFile(WrittenFile(), decoded));
        HGLOBAL again = PNGReadGraphicFile(WrittenFile());
        CheckSame(decoded, again);
        GlobalFree(again);
    }
    GlobalFree(decoded);
    return 0;
}
