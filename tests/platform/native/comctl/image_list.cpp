#include "platform/native/comctl/image_list.h"
#include "platform/native/gdi/objects.h"
#include "platform/win32.h"
#include "program/ids.h"

#include <gtest/gtest.h>

#include <cstring>

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
        ASSERT_EQ(memcmp(picture.pixels + y * 8, from.pixels + y * 16 + 8, 8 * 4), 0);
    EXPECT_FALSE(FindListPicture(list, 2, &picture));
    EXPECT_FALSE(FindListPicture(list, -1, &picture));
    DeleteObject(bitmap);
    ImageList_Destroy(list);
    EXPECT_FALSE(FindListPicture(list, 0, &picture));
}
