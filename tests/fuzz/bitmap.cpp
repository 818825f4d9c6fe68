#include "exe/categories.h"
#include "tests/fuzz/fuzz.h"

FUZZ_KIND(CategoryBitmap)
