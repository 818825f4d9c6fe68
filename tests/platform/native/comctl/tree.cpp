// What the layer's tree promises beyond Windows: handles that never come back, and the reading
// calls of the visible half.
#include <gtest/gtest.h>

#include "platform/native/comctl/tree.h"
#include "tests/support/loops.h"

TEST(NativeTree, IsReadByPositionAndNeverGivesTheHandleOfADeadItemAgain)
{
    HWND tree = CreateWindowExA(0, WC_TREEVIEWA, "", WS_CHILD, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                nullptr, nullptr);
    HTREEITEM old = InsertItem(tree, "old");
    SendMessageA(tree, TVM_DELETEITEM, 0, (LPARAM)TVI_ROOT);
    HTREEITEM top = InsertItem(tree, "top");
    EXPECT_NE(old, top);
    TreeItemLook look;
    EXPECT_FALSE(GetTreeItemLook(tree, old, &look));
    ASSERT_TRUE(GetTreeItemLook(tree, top, &look));
    EXPECT_EQ(*look.label, "top");
    EXPECT_EQ(look.image, 3);
    EXPECT_EQ(look.selectedImage, 4);

    HTREEITEM second = InsertItem(tree, "second", top);
    char text[9] = "????????";
    TVITEMA got = {};
    got.mask = TVIF_TEXT;
    got.hItem = second;
    got.pszText = text;
    got.cchTextMax = 5;
    EXPECT_TRUE(SendMessageA(tree, TVM_GETITEMA, 0, (LPARAM)&got));
    EXPECT_EQ(std::string(text, sizeof text), std::string("seco\0???\0", 9));
    DestroyWindow(tree);
    EXPECT_EQ(CountTreeChildren(tree, nullptr), 0);
    EXPECT_EQ(TreePosition(tree, second), -1);
}
