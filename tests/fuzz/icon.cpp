#include "exe/categories.h"
#include "tests/fuzz/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    ShowAndSave(CategoryIcon, data, size);
    return 0;
}
