// The sizes up to which pictures are taken.
#pragma once

#include <cstdint>

// A picture of more pixels is not drawn.
constexpr uint32_t mostPicturePixels = 64000000;

// A compressed picture of more pixels is not decoded: its few bytes may tell of any number.
constexpr uint32_t mostDecodedPixels = 16000000;
