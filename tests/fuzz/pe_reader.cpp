#include "exe/pe_reader.h"
#include "tests/fuzz/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    ReadAndCheck(data, size, ReadPeResources);
    return 0;
}
