// Executables with as many resources as wanted, for measuring.
#pragma once

#include "samples/builder/builder.h"

// count small resources, shared out evenly among the four kinds that are kept; each kind's are
// numbered from 1 on. An NE file holds up to 64,000.
ExecutableDescription DescribeMany(int count);
