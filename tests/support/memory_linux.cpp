// Memory that was never written, or is free again, holds what no test expects.
#include <malloc.h>

[[maybe_unused]] static const int isFilled = mallopt(M_PERTURB, 0xA5);
