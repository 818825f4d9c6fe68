#include "samples/artwork/scenes.h"

#include <algorithm>
#include <cmath>

static const double pi = 3.14159265358979;

const Hour morning = {0x5b9bd5, 0xfdf0d5, 0xfff6c8, 0x8fa8b8, 0x4d6b3c, 0.72, 0.30, 0.07, false};
const Hour dusk = {0x3b2a5c, 0xf59a5a, 0xffd27a, 0x8a5a86, 0x3d2347, 0.62, 0.52, 0.09, false};
const Hour night = {0x0b1030, 0x3c4a86, 0xf2f0dc, 0x3a3f6e, 0x171a38, 0.70, 0.20, 0.06, true};

#define HILLS 4

static double RidgeAt(int hill, double x)
{
    double wave = sin(x * (3.1 + 1.7 * hill) + 2.3 * hill) * 0.6 +
                  sin(x * (7.3 - hill) + 0.9 + 4.1 * hill) * 0.25;
    return 0.60 + 0.10 * hill + 0.055 * wave;
}

static Color SkyAt(const Hour &hour, double x, double y, double shape)
{
    Color sky = Mix(ColorOf(hour.skyTop), ColorOf(hour.skyLow), y / 0.68);
    double distance = hypot((x - hour.lightX) * shape, y - hour.lightY);
    sky = Mix(sky, ColorOf(hour.light), 0.75 * exp(-distance / (hour.lightRadius * 2.2)));
    if (distance < hour.lightRadius)
        sky = ColorOf(hour.light);
    if (hour.isNight && distance > hour.lightRadius * 1.6) {
        // one star in some of the cells of a grid
        int column = (int)(x * shape * 22);
        int row = (int)(y * 22);
        if (Grain(column, row) > 0.86) {
            double away = hypot(x * shape * 22 - column - 0.2 - 0.6 * Grain(row, column + 40),
                                y * 22 - row - 0.2 - 0.6 * Grain(column + 80, row));
            sky = Mix(sky, ColorOf(0xffffff), 1 - Smooth(0.06, 0.16, away));
        }
    }
    return sky;
}

// A blossom in some of the cells of a grid of `cells` rows.
static bool IsHeather(double x, double y, double cells)
{
    int column = (int)(x * cells);
    int row = (int)(y * cells);
    double away = hypot(x * cells - column - 0.3 - 0.4 * Grain(row, column),
                        y * cells - row - 0.3 - 0.4 * Grain(column + 80, row));
    return Grain(column, row) > 0.70 && away < 0.42;
}

Color MoorAt(const Hour &hour, double x, double y, double shape)
{
    Color color = SkyAt(hour, x, y, shape);
    for (int hill = 0; hill < HILLS; hill++) {
        double ridge = RidgeAt(hill, x);
        if (y < ridge)
            continue;
        double part = hill / (HILLS - 1.0);
        color = Mix(ColorOf(hour.farHill), ColorOf(hour.nearHill), part);
        // lighter along the ridge, where the light falls
        color = Mix(color, ColorOf(hour.light), 0.35 * (1 - part) * exp(-(y - ridge) * 18));
        if (hill >= HILLS - 2 && IsHeather(x * shape, y, 60 / sqrt(shape)))
            color = Mix(color, ColorOf(hour.isNight ? 0x6a5a9a : 0xb46aa8), 0.6 * part);
    }
    return color;
}

// Which side of the spine, and how far: from -1 to 1 across the feather; along from 0 to 1.
struct QuillPlace {
    double along;
    double across;
    double width;
};

static QuillPlace PlaceOnQuill(double x, double y)
{
    const double nibX = 0.16, nibY = 0.92, topX = 0.86, topY = 0.08;
    double lengthX = topX - nibX;
    double lengthY = topY - nibY;
    double length = hypot(lengthX, lengthY);
    double along = ((x - nibX) * lengthX + (y - nibY) * lengthY) / (length * length);
    double across = ((x - nibX) * -lengthY + (y - nibY) * lengthX) / length;
    across += 0.10 * 4 * along * (1 - along); // the spine's bend
    double part = std::clamp((along - 0.24) / 0.78, 0.0, 1.0);
    return {along, across, 0.19 * pow(sin(pi * pow(part, 0.75)), 0.8)};
}

Color QuillAt(double x, double y, uint32_t dark, uint32_t light)
{
    QuillPlace place = PlaceOnQuill(x, y);
    if (place.along < 0 || place.along > 1.02)
        return {};
    double thickness = 0.016 + 0.014 * (1 - place.along);
    if (place.along < 0.10) // the cut nib
        thickness *= place.along / 0.10;
    if (fabs(place.across) < thickness)
        return place.along < 0.10 ? ColorOf(0x2a2030) : ColorOf(0xf4e6c4);
    if (place.width <= 0 || fabs(place.across) > place.width)
        return {};
    double side = place.across / place.width;
    double barb = place.along * 26 - fabs(side) * 4;
    // a few barbs stand apart at the edge
    double split = barb / 5 - floor(barb / 5);
    if (split < 0.10 * Smooth(0.45, 1.0, fabs(side)) * 2)
        return {};
    double shade = 0.55 + 0.40 * side + 0.12 * sin(barb * 2 * pi);
    return Mix(ColorOf(dark), ColorOf(light), shade);
}

static bool InRoundBox(double x, double y, double left, double top, double right, double bottom,
                       double radius)
{
    double nearX = std::clamp(x, left + radius, right - radius);
    double nearY = std::clamp(y, top + radius, bottom - radius);
    return hypot(x - nearX, y - nearY) <= radius;
}

Color BottleAt(double x, double y, uint32_t ink)
{
    Color glass = ColorOf(0xcfe3ee, 0.55);
    if (InRoundBox(x, y, 0.34, 0.06, 0.66, 0.20, 0.04)) // cork
        return Mix(ColorOf(0xd9a66a), ColorOf(0x8a5a2c), (x - 0.34) / 0.32);
    if (InRoundBox(x, y, 0.30, 0.20, 0.70, 0.30, 0.04)) // lip
        return Mix(ColorOf(0xeaf6fc), ColorOf(0x6f93a8), fabs(x - 0.42) / 0.3);
    bool neck = x > 0.37 && x < 0.63 && y >= 0.28 && y < 0.44;
    if (!neck && !InRoundBox(x, y, 0.10, 0.40, 0.90, 0.95, 0.14))
        return {};
    if (neck && y < 0.42)
        return Mix(ColorOf(0xeaf6fc, 0.8), ColorOf(0x7d9db0, 0.8), fabs(x - 0.45) / 0.2);
    if (!InRoundBox(x, y, 0.15, 0.45, 0.85, 0.90, 0.10))
        return Mix(ColorOf(0xf2fafe, 0.9), ColorOf(0x86a8bc, 0.9), x);
    if (y < 0.54 + 0.012 * sin(x * 18))
        return glass;
    Color color = Mix(Mix(ColorOf(0xffffff), ColorOf(ink), 0.72), ColorOf(ink), (y - 0.5) / 0.3);
    color = Mix(color, ColorOf(0x000000), 0.35 * Smooth(0.55, 0.9, x));
    if (InRoundBox(x, y, 0.21, 0.58, 0.27, 0.82, 0.03)) // a reflection
        color = Mix(color, ColorOf(0xffffff), 0.6);
    return color;
}
