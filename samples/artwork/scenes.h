// What the pictures show: the moor at different hours, a quill, an ink bottle. Places are counted
// in parts of the picture's width and height, from the top left.
#pragma once

#include "samples/artwork/paint.h"

struct Hour {
    uint32_t skyTop;
    uint32_t skyLow;
    uint32_t light; // sun or moon, and its glow
    uint32_t farHill;
    uint32_t nearHill;
    double lightX;
    double lightY;
    double lightRadius;
    bool isNight; // with stars
};

extern const Hour morning;
extern const Hour dusk;
extern const Hour night;

// A landscape of hills under the sky. `shape` is width / height, so that the light is round.
Color MoorAt(const Hour &hour, double x, double y, double shape);

// A quill whose nib stands at (0.16, 0.92) and whose feather leans to the top right of the square;
// clear outside it.
Color QuillAt(double x, double y, uint32_t dark, uint32_t light);

// An ink bottle that fills the square; clear outside it.
Color BottleAt(double x, double y, uint32_t ink);
