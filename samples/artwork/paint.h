// Pictures from functions: a colour for every place of the plane, averaged over each pixel.
#pragma once

#include "samples/builder/pictures.h"

// Parts from 0 to 1; not multiplied by alpha.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 0;
};

// From 0xRRGGBB, opaque unless said otherwise.
Color ColorOf(uint32_t rgb, double alpha = 1);
uint32_t PixelOf(const Color &color);

// From a (part 0) to b (part 1); a part outside is taken as the nearest end.
Color Mix(const Color &a, const Color &b, double part);

// `above` laid on `below`.
Color Over(const Color &below, const Color &above);

// 0 below `from`, 1 above `to`, smooth between.
double Smooth(double from, double to, double value);

// The same number between 0 and 1 for the same place every time.
double Grain(int x, int y);

// Averages place(x, y), with x and y in pixels from the top left, over `fine` x `fine` places of
// each pixel.
template <class Place> Picture Paint(int width, int height, int fine, Place place)
{
    Picture picture = MakePicture(width, height, 0);
    for (int i = 0; i < width * height; i++) {
        Color sum;
        for (int j = 0; j < fine * fine; j++) {
            Color color =
                place(i % width + (j % fine + 0.5) / fine, i / width + (j / fine + 0.5) / fine);
            sum.red += color.red * color.alpha;
            sum.green += color.green * color.alpha;
            sum.blue += color.blue * color.alpha;
            sum.alpha += color.alpha;
        }
        if (sum.alpha > 0)
            sum = {sum.red / sum.alpha, sum.green / sum.alpha, sum.blue / sum.alpha,
                   sum.alpha / (fine * fine)};
        picture.pixels[(size_t)i] = PixelOf(sum);
    }
    return picture;
}
