#include "exe/ne_reader.h"
#include "platform/byte_reader.h"
#include "tests/fuzz/fuzz.h"

static DWORD headerOffset;

static int Read(HWND tree, FILE *file)
{
    return ReadNeResources(tree, file, headerOffset);
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    ByteReader reader = OpenBytes(data, size);
    headerOffset = ReadU32(&reader, 60);
    ReadAndCheck(data, size, Read);
    return 0;
}
