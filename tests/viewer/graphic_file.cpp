#include "viewer/graphic_file.h"

#include <gtest/gtest.h>

TEST(GraphicFile, IsKnownByItsExtensionInAnyCase)
{
    const struct {
        const char *name;
        int format;
    } cases[] = {{"a.png", 0}, {"b.x.PNG", 0}, {"a.png.bmp", -1}, {"png", -1},
                 {"a.", -1},   {"a.pn", -1},   {"a.pngx", -1},    {"", -1}};
    for (const auto &c : cases)
        EXPECT_EQ(FindGraphicFormat(c.name), c.format) << c.name;
    EXPECT_EQ(ReadGraphicFile("there is no such file.png"), nullptr);
}
