#include "samples/artwork/sample_artwork.h"

#include "samples/artwork/program_artwork.h"

#include <algorithm>
#include <cmath>

Picture DrawMoor(const Hour &hour, int width, int height)
{
    double shape = (double)width / height;
    return Paint(width, height, 4,
                 [&](double x, double y) { return MoorAt(hour, x / width, y / height, shape); });
}

Picture DrawQuillOnPaper(int width, int height)
{
    return Paint(width, height, 4, [&](double x, double y) {
        Color paper = Mix(ColorOf(0xfbf3dc), ColorOf(0xe8d6ac),
                          hypot(x / width - 0.5, y / height - 0.5) * 1.2);
        paper = Mix(paper, ColorOf(0xc9b27e), 0.06 * Grain((int)x, (int)y));
        double line = height * 0.91 + 4 * sin(x / width * 9);
        if (fabs(y - line) < 1.2 && x > width * 0.08 && x < width * 0.36)
            paper = ColorOf(0x2b2f6a); // what was just written
        double left = (width - height) / 2.0;
        Color shadow = QuillAt((x - left - 5) / height, (y - 4) / height, 0, 0);
        shadow.alpha *= 0.18;
        return Over(Over(paper, shadow),
                    QuillAt((x - left) / height, y / height, 0x7a3b4a, 0xf0b8a8));
    });
}

Picture DrawQuillIcon(int size)
{
    return DrawProgramIcon(size);
}

Picture DrawBottleIcon(int size)
{
    return Paint(size, size, 8,
                 [&](double x, double y) { return BottleAt(x / size, y / size, 0x2b3fa0); });
}

Picture Dither(const Picture &picture, const std::vector<uint32_t> &colors, int spread)
{
    static const int pattern[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
    Picture dithered = picture;
    for (int y = 0; y < picture.height; y++)
        for (int x = 0; x < picture.width; x++) {
            int offset = (pattern[y % 4][x % 4] * 2 - 15) * spread / 32;
            uint32_t shifted = 0;
            for (int shift : {16, 8, 0}) {
                int part = (int)(picture.At(x, y) >> shift & 0xff) + offset;
                shifted |= (uint32_t)std::clamp(part, 0, 255) << shift;
            }
            dithered.At(x, y) =
                colors[NearestColor(colors, shifted)] | (picture.At(x, y) & 0xff000000);
        }
    return dithered;
}

std::vector<uint32_t> MonochromeColors()
{
    return {0x000000, 0xffffff};
}

std::vector<uint32_t> SixteenColors()
{
    return {0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xc0c0c0,
            0x808080, 0xff0000, 0x00ff00, 0xffff00, 0x0000ff, 0xff00ff, 0x00ffff, 0xffffff};
}

std::vector<uint32_t> CubeColors()
{
    std::vector<uint32_t> colors;
    for (uint32_t i = 0; i < 6 * 6 * 6; i++)
        colors.push_back(i / 36 * 51 << 16 | i / 6 % 6 * 51 << 8 | i % 6 * 51);
    return colors;
}

std::vector<uint32_t> DuskColors()
{
    return {0x2a1638, 0x3d2347, 0x3b2a5c, 0x5a3f66, 0x6b4774, 0x8a5a86, 0x5d3d5c, 0x7d4f5c,
            0xa0645b, 0xc57c5a, 0xe38f5a, 0xf59a5a, 0xf8b468, 0xffd27a, 0xb46aa8, 0xa87888};
}
