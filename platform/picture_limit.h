// The size up to which pictures are taken.
#pragma once

#include <cstdint>

// A picture of more pixels is neither decoded nor drawn.
constexpr uint32_t mostPicturePixels = 64000000;
