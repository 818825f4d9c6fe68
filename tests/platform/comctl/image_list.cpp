#include "platform/win32.h"

#include "program/ids.h"

#include <gtest/gtest.h>

TEST(ImageList, PicturesAreCountedAndNumbered)
{
    HIMAGELIST list = ImageList_Create(16, 14, ILC_COLOR8, 2, 0);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(ImageList_GetImageCount(list), 0);
    HMODULE program = GetModuleHandleA(nullptr);
    for (int i = 0; i < 4; i++) { // more than were foreseen
        HBITMAP bitmap = LoadBitmapA(
            program, MAKEINTRESOURCEA(i % 2 == 0 ? IDB_FOLDER_CLOSED : IDB_FOLDER_SELECTED));
        ASSERT_NE(bitmap, nullptr);
        EXPECT_EQ(ImageList_Add(list, bitmap, nullptr), i);
        EXPECT_TRUE(DeleteObject(bitmap)); // the list has its own copy
    }
    EXPECT_EQ(ImageList_Add(list, nullptr, nullptr), -1);
    EXPECT_EQ(ImageList_GetImageCount(list), 4);
    EXPECT_TRUE(ImageList_Destroy(list));
    // A wide bitmap gives several.
    list = ImageList_Create(8, 14, ILC_COLOR8, 2, 2);
    HBITMAP wide = LoadBitmapA(program, MAKEINTRESOURCEA(IDB_FOLDER_CLOSED));
    EXPECT_EQ(ImageList_Add(list, wide, nullptr), 0);
    EXPECT_EQ(ImageList_GetImageCount(list), 2);
    DeleteObject(wide);
    ImageList_Destroy(list);
    EXPECT_EQ(ImageList_GetImageCount(nullptr), 0);
    EXPECT_EQ(ImageList_Create(0, 14, ILC_COLOR8, 2, 2), nullptr);
}
