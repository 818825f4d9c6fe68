// What the samples hold: between them every kind of resource that a user meets, and with it some
// that Quillmoor passes over.
#pragma once

#include "samples/builder/builder.h"

// A library for 32-bit Windows, heather.dll.
ExecutableDescription DescribeHeather();

// A custom control for Windows 3, curlew.vbx.
ExecutableDescription DescribeCurlew();
