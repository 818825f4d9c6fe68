// What the layer's tree promises beyond Windows: handles that never come back, text that always
// fits its buffer, and the reading calls of the visible half.
#include <gtest/gtest.h>

#include <string>

#include "platform/native/comctl/tree.h"

namespace
{

HTREEITEM Insert(HWND tree, std::string label, HTREEITEM parent)
{
    TVINSERTSTRUCTA insertion = {};
    insertion.hParent = parent;
    insertion.hInsertAfter = TVI_SORT;
    insertion.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    insertion.item.iImage = 3;
    insertion.item.iSelectedImage = 4;
    insertion.item.pszText = label.data();
    return reinterpret_cast<HTREEITEM>(
        SendMessageA(tree, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insertion)));
}

HWND MakeTree()
{
    return CreateWindowExA(0, WC_TREEVIEWA, "", WS_CHILD, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                           nullptr, nullptr);
}

TEST(NativeTree, NeverGivesTheHandleOfADeadItemAgain)
{
    HWND tree = MakeTree();
    HTREEITEM old = Insert(tree, "old", TVI_ROOT);
    SendMessageA(tree, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    HTREEITEM renewed = Insert(tree, "new", TVI_ROOT);
    EXPECT_NE(old, renewed);
    TreeItemLook look;
    EXPECT_FALSE(GetTreeItemLook(tree, old, &look));
    ASSERT_TRUE(GetTreeItemLook(tree, renewed, &look));
    EXPECT_EQ(*look.label, "new");
    EXPECT_EQ(look.image, 3);
    EXPECT_EQ(look.selectedImage, 4);
    DestroyWindow(tree);
}

TEST(NativeTree, CutsTextToTheBufferAndTerminatesIt)
{
    HWND tree = MakeTree();
    char text[9] = "????????";
    TVITEMA got = {};
    got.mask = TVIF_TEXT;
    got.hItem = Insert(tree, "a longer label", TVI_ROOT);
    got.pszText = text;
    got.cchTextMax = 7;
    EXPECT_TRUE(SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&got)));
    EXPECT_STREQ(text, "a long");
    EXPECT_EQ(text[7], '?');
    DestroyWindow(tree);
}

TEST(NativeTree, IsReadByPosition)
{
    HWND tree = MakeTree();
    HTREEITEM top = Insert(tree, "top", TVI_ROOT);
    HTREEITEM second = Insert(tree, "second", top), first = Insert(tree, "First", top);
    EXPECT_EQ(CountTreeChildren(tree, nullptr), 1);
    EXPECT_EQ(CountTreeChildren(tree, top), 2);
    EXPECT_EQ(TreeChildAt(tree, top, 0), first);
    EXPECT_EQ(TreeChildAt(tree, top, 1), second);
    EXPECT_EQ(TreeChildAt(tree, top, 2), nullptr);
    EXPECT_EQ(TreePosition(tree, second), 1);
    EXPECT_EQ(TreeParent(tree, second), top);
    EXPECT_EQ(TreeParent(tree, top), nullptr);
    DestroyWindow(tree);
    EXPECT_EQ(CountTreeChildren(tree, nullptr), 0);
    EXPECT_EQ(TreePosition(tree, second), -1);
}

} // namespace
