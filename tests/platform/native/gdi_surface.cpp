#include "platform/native/comctl/image_list.h"
#include "platform/native/gdi/device_context.h"
#include "platform/native/visible.h"
#include "platform/win32.h"

#include "resources/ids.h"

#include <gtest/gtest.h>

// A window's context draws at its origin and inside its clip, and memory pixels repeat.
TEST(Surface, OriginClipAndDensity)
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
        HDC dc = OpenSurfaceContext(surface, {1, 1}, {2, 1, 4, 2});
        const BYTE bits[] = {0x55, 0, 0xAA, 0};
        HBITMAP bitmap = CreateBitmap(8, 2, 1, 1, bits);
        HBRUSH brush = CreatePatternBrush(bitmap);
        SetTextColor(dc, SwapRedBlue('M'));
        SetBkColor(dc, SwapRedBlue('C'));
        const RECT all = {-9, -9, 9, 9};
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

struct DrawnLine {
    std::string text;
    std::string face;
    int height, x, y;
    uint32_t pixel;
    RECT clip;
};
static std::vector<DrawnLine> drawnLines;

// Records text: every letter is 5 pixels wide and as tall as the font.
struct TextRecorder {
    VisibleHalf before = visible;

    TextRecorder()
    {
        drawnLines.clear();
        visible.measureFont = [](const Font &font, FontSize *size) {
            *size = {font.height - 3, 3, 5};
        };
        visible.measureText = [](const Font &, LPCSTR, int bytes) { return 5 * bytes; };
        visible.drawText = [](const PixelSurface *, const RECT *clip, const Font &font, int x,
                              int y, uint32_t pixel, LPCSTR text, int bytes) {
            drawnLines.push_back(
                {std::string(text, (size_t)bytes), font.face, font.height, x, y, pixel, *clip});
        };
    }
    ~TextRecorder()
    {
        visible = before;
    }
};

TEST(SurfaceText, LinesReachTheVisibleHalfInPlace)
{
    const UINT format = DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;
    std::vector<uint32_t> words(100 * 60, 0xFFFFFF);
    const PixelSurface surface = {100, 60, 1, words.data(), 100};
    HDC dc = OpenSurfaceContext(surface, {10, 20}, {10, 20, 90, 60});
    HFONT font = CreateFontA(13, 0, 0, 0, 700, 0, 0, 0, 0, 0, 0, 0, 0, "Courier New");
    SelectObject(dc, font);
    SetTextColor(dc, RGB(1, 2, 3));
    RECT rect = {5, 8, 45, 40};
    SetBkMode(dc, TRANSPARENT);
    EXPECT_TRUE(TextOutA(dc, 4, 2, "abc", 2)); // with no visible half nothing is drawn
    TextRecorder recorder;
    EXPECT_TRUE(TextOutA(dc, 4, 2, "abc", 2));
    EXPECT_TRUE(TextOutA(dc, 4, 2, "", 0));
    EXPECT_EQ(DrawTextA(dc, "four", -1, &rect, format), (40 - 8) / 2 - 13 / 2 + 13);
    EXPECT_EQ(DrawTextA(dc, "four", -1, &rect, DT_CENTER), 0);
    ASSERT_EQ(drawnLines.size(), 2u);
    EXPECT_EQ(drawnLines[0].text, "ab");
    EXPECT_EQ(drawnLines[0].face, "Courier New");
    EXPECT_EQ(drawnLines[0].height, 13);
    EXPECT_EQ(drawnLines[0].x, 14);
    EXPECT_EQ(drawnLines[0].y, 22);
    EXPECT_EQ(drawnLines[0].pixel, 0x010203u);
    EXPECT_EQ(drawnLines[0].clip.right, 90);
    EXPECT_EQ(drawnLines[1].x, 10 + 5 + (40 - 20) / 2);
    EXPECT_EQ(drawnLines[1].y, 20 + 8 + 10);
    EXPECT_EQ(drawnLines[1].clip.left, 15);
    EXPECT_EQ(drawnLines[1].clip.bottom, 60);
    EXPECT_EQ(words[22 * 100 + 14], 0xFFFFFFu); // transparent
    SetBkMode(dc, OPAQUE);
    SetBkColor(dc, RGB(0, 0, 255));
    TextOutA(dc, 4, 2, "ab", 2);
    EXPECT_EQ(words[22 * 100 + 14], 0x0000FFu);
    EXPECT_EQ(words[34 * 100 + 23], 0x0000FFu);
    EXPECT_EQ(words[34 * 100 + 24], 0xFFFFFFu);
    EXPECT_EQ(words[35 * 100 + 23], 0xFFFFFFu);
    CloseSurfaceContext(dc);
    DeleteObject(font);
}

TEST(ListPicture, PixelsAreTheBitmaps)
{
    HBITMAP bitmap = LoadBitmapA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDB_FOLDER_CLOSED));
    const PixelSurface &from = FindDrawing<Bitmap>(bitmap)->surface;
    HIMAGELIST list = ImageList_Create(8, 14, ILC_COLOR8, 2, 2);
    ImageList_Add(list, bitmap, nullptr);
    ListPicture picture;
    ASSERT_TRUE(FindListPicture(list, 1, &picture));
    EXPECT_EQ(picture.width, 8);
    for (int y = 0; y < 14; y++)
        for (int x = 0; x < 8; x++)
            ASSERT_EQ(picture.pixels[y * 8 + x], from.pixels[y * 16 + 8 + x]);
    EXPECT_FALSE(FindListPicture(list, 2, &picture));
    EXPECT_FALSE(FindListPicture(list, -1, &picture));
    DeleteObject(bitmap);
    ImageList_Destroy(list);
    EXPECT_FALSE(FindListPicture(list, 0, &picture));
}
