// The pictures in the samples.
#pragma once

#include "samples/artwork/scenes.h"

// A moor of this size in pixels.
Picture DrawMoor(const Hour &hour, int width, int height);

// A quill on paper.
Picture DrawQuillOnPaper(int width, int height);

// Icons with clear ground, size pixels on each edge.
Picture DrawQuillIcon(int size);
Picture DrawBottleIcon(int size);

// The picture in these colours alone, with a pattern of points where a colour lies between two.
// spread is the distance of neighbouring colours, from 0 to 255.
Picture Dither(const Picture &picture, const std::vector<uint32_t> &colors, int spread);

// Palettes: black and white; Windows' sixteen colours; six levels each of red, green and blue.
std::vector<uint32_t> MonochromeColors();
std::vector<uint32_t> SixteenColors();
std::vector<uint32_t> CubeColors();

// Sixteen colours for the moor at dusk.
std::vector<uint32_t> DuskColors();
