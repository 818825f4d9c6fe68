#include "samples/artwork/program_artwork.h"

#include "samples/artwork/scenes.h"

#include <cmath>
#include <cstdlib>

// Pixel art: each letter of the rows is looked up in `letters` and gets the colour of its place.
static Picture FromRows(const char *const *rows, int width, int height, const char *letters,
                        const uint32_t *colors)
{
    Picture picture = MakePicture(width, height, 0);
    for (int y = 0; y < height; y++)
        for (int x = 0; x < width; x++) {
            size_t index = std::string_view(letters).find(rows[y][x]);
            picture.At(x, y) = index == std::string_view::npos ? 0 : colors[index];
        }
    return picture;
}

Picture DrawFolder(bool isOpen)
{
    static const char *const closed[] = {"                ", "  oooooo        ", " ollllllo       ",
                                         " olhhhhhooooooo ", " ohhhhhhllllllo ", " ollllllllllllo ",
                                         " olyyyyyyyyyyyo ", " olyyyyyyyyyyyo ", " olyyyyyyyyyydo ",
                                         " olyyyyyyyyyddo ", " olyyyyyyyydddo ", " olyyyyyyydddmo ",
                                         " ommmmmmmmmmmmo ", "  oooooooooooo  "};
    static const char *const open[] = {"                ", "  oooooo        ", " ollllllo       ",
                                       " olyyyyyooooooo ", " olyyyyyyyyyydo ", " olywwwwwwwwwdo ",
                                       " olwwwbbbwwbwdo ", "oooooooooooooowo", "ollllllllllllhoo",
                                       "olyyyyyyyyyyyymo", " olyyyyyyyyyddmo", " olyyyyyyydddmo ",
                                       "  ommmmmmmmmmmo ", "  oooooooooooo  "};
    static const uint32_t colors[] = {0xffffffff, 0xff8a6414, 0xfffff0b0, 0xfffbe48c, 0xfff5cf5b,
                                      0xffe9b93c, 0xffd09a28, 0xfff8f8ff, 0xff7a86b8};
    return FromRows(isOpen ? open : closed, 16, 14, " olhydmwb", colors);
}

Picture DrawProgramIcon(int size)
{
    return Paint(size, size, 8, [size](double pixelX, double pixelY) {
        double x = pixelX / size;
        double y = pixelY / size;
        Color color;
        double away = std::hypot(x - 0.5, y - 0.5);
        if (away < 0.49)
            color = Mix(MoorAt(dusk, x, y * 0.92 + 0.03, 1), ColorOf(0x24123a),
                        Smooth(0.45, 0.47, away));
        return Over(color, QuillAt(x, y, 0x8fb4d8, 0xffffff));
    });
}

// Whether the cursor is black at a place counted from the hot spot.
static bool IsCursorBlack(int x, int y)
{
    int aside = std::abs(x);
    bool bar = (aside == 2 || aside == 3) && std::abs(y) <= 9;
    bool arrow = aside >= 6 && aside <= 10 && std::abs(y) <= 10 - aside;
    return bar || arrow;
}

Picture DrawSplitCursor()
{
    Picture picture = MakePicture(32, 32, 0);
    for (int y = 0; y < 32; y++)
        for (int x = 0; x < 32; x++) {
            // white around the black, to be seen on dark ground
            for (int i = 0; i < 9; i++)
                if (IsCursorBlack(x - 15 + i % 3 - 1, y - 15 + i / 3 - 1))
                    picture.At(x, y) = 0xffffffff;
            if (IsCursorBlack(x - 15, y - 15))
                picture.At(x, y) = 0xff000000;
        }
    return picture;
}

Picture DrawAboutStrip()
{
    const int width = 87;
    const int height = 367;
    return Paint(width, height, 4, [](double pixelX, double pixelY) {
        Hour hour = night;
        hour.lightX = 0.66;
        hour.lightY = 0.13;
        hour.lightRadius = 0.042;
        double x = pixelX / width;
        double y = pixelY / height;
        Color color = MoorAt(hour, x, y, (double)width / height);
        return Over(color, QuillAt((pixelX + 2) / 94, (pixelY - 116) / 190, 0x8a93c4, 0xffffff));
    });
}

Picture DrawMessageIcon()
{
    return Paint(32, 32, 8, [](double x, double y) -> Color {
        double away = std::hypot(x - 16, y - 16);
        if (away > 15.5)
            return {};
        bool stem = std::abs(x - 16) < 2.2 && y > 13 && y < 24.5;
        bool foot = std::abs(x - 16) < 4.2 && y > 22.5 && y < 25;
        bool serif = x > 12 && x < 17 && y > 13 && y < 15.4;
        if (stem || foot || serif || std::hypot(x - 16, y - 8.6) < 2.6)
            return ColorOf(0xffffff);
        Color ground = Mix(ColorOf(0x8a5fb0), ColorOf(0x4a2f78), y / 32);
        return Mix(ground, ColorOf(0x2c1850), Smooth(13.6, 14.6, away));
    });
}
