#include "platform/native/gdi/device_context.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// A window's context draws inside its clip, and memory pixels repeat.
TEST(Surface, ClipAndDensity)
{
    struct {
        double ratio;
        const char *picture; // of 5 x 3 logical pixels
    } const cases[] = {
        {1, ".....\n..CM.\n....."},
        {2, "..........\n..........\n....CCMM..\n....CCMM..\n..........\n.........."},
        {1.5, "........\n........\n...CCM..\n........\n........"},
    };
    for (const auto &row : cases) {
        PixelSurface surface = {5, 3, row.ratio, nullptr, 0};
        const size_t width = (size_t)MemoryEdge(surface, 5);
        const size_t height = (size_t)MemoryEdge(surface, 3);
        std::vector<uint32_t> words(width * height, '.');
        surface.pixels = words.data();
        surface.stride = width;
        HDC dc = OpenSurfaceContext(surface, {2, 1, 4, 2});
        const BYTE bits[] = {0x55, 0, 0xAA, 0};
        HBITMAP bitmap = CreateBitmap(8, 2, 1, 1, bits);
        HBRUSH brush = CreatePatternBrush(bitmap);
        SetTextColor(dc, SwapRedBlue('M'));
        SetBkColor(dc, SwapRedBlue('C'));
        const RECT all = {-9, -9, 9, 9};
        SetBrushOrgEx(dc, 1, 1, nullptr);
        FillRect(dc, &all, brush);
        std::string picture;
        for (size_t i = 0; i < words.size(); i++)
            picture += (i > 0 && i % width == 0 ? "\n" : "") + std::string(1, (char)words[i]);
        EXPECT_EQ(picture, row.picture) << row.ratio;
        EXPECT_FALSE(DeleteDC(dc)); // it is the window's
        EXPECT_TRUE(CloseSurfaceContext(dc));
        EXPECT_EQ(FillRect(dc, &all, brush), 0);
        DeleteObject(brush);
        DeleteObject(bitmap);
    }
}
