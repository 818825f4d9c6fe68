#include "samples/artwork/paint.h"

#include <algorithm>
#include <cmath>

Color ColorOf(uint32_t rgb, double alpha)
{
    return {(rgb >> 16 & 0xff) / 255.0, (rgb >> 8 & 0xff) / 255.0, (rgb & 0xff) / 255.0, alpha};
}

uint32_t PixelOf(const Color &color)
{
    auto byte = [](double part) { return (uint32_t)std::lround(std::clamp(part, 0.0, 1.0) * 255); };
    return byte(color.alpha) << 24 | byte(color.red) << 16 | byte(color.green) << 8 |
           byte(color.blue);
}

Color Mix(const Color &a, const Color &b, double part)
{
    part = std::clamp(part, 0.0, 1.0);
    auto mix = [part](double from, double to) { return from + (to - from) * part; };
    return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue), mix(a.alpha, b.alpha)};
}

Color Over(const Color &below, const Color &above)
{
    double kept = below.alpha * (1 - above.alpha);
    double alpha = above.alpha + kept;
    if (alpha <= 0)
        return {};
    auto lay = [&](double under, double over) {
        return (over * above.alpha + under * kept) / alpha;
    };
    return {lay(below.red, above.red), lay(below.green, above.green), lay(below.blue, above.blue),
            alpha};
}

double Smooth(double from, double to, double value)
{
    double part = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return part * part * (3 - 2 * part);
}

double Grain(int x, int y)
{
    uint32_t mixed = (uint32_t)x * 0x9e3779b1u ^ (uint32_t)y * 0x85ebca77u;
    mixed = (mixed ^ mixed >> 15) * 0x2c1b3c6du;
    mixed = (mixed ^ mixed >> 12) * 0x297a2d39u;
    return (mixed >> 8) / 16777216.0;
}
