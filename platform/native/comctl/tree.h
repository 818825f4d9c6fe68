// The tree control's items: what a "SysTreeView32" window holds, without a picture of it.
//
// The window's procedure answers the messages that platform/win32/comctl.h declares. The visible
// half reads the items through the calls below; what the user does is in tree_user.h.
#pragma once

#include <string>

#include "platform/win32/comctl.h"

// The window procedure of class "SysTreeView32".
LRESULT CALLBACK TreeProcedure(HWND tree, UINT message, WPARAM wParam, LPARAM lParam);

// One item, as it is shown. The label is in the ANSI code page and stays the tree's: it holds until
// the items change.
struct TreeItemLook {
    const std::string *label;
    int image;
    int selectedImage;
};

// Reading the items of a window of that class. A parent of NULL means the top level. Children are
// in the tree's order. Dead items, positions outside and windows of another class give 0, NULL, -1
// and FALSE.
int CountTreeChildren(HWND tree, HTREEITEM parent);
HTREEITEM TreeChildAt(HWND tree, HTREEITEM parent, int position);
HTREEITEM TreeParent(HWND tree, HTREEITEM item);
int TreePosition(HWND tree, HTREEITEM item);
BOOL GetTreeItemLook(HWND tree, HTREEITEM item, TreeItemLook *look);
HIMAGELIST TreeImages(HWND tree);

// The item that is selected, or NULL. SelectTreeItem tells nobody.
HTREEITEM TreeSelection(HWND tree);
void SelectTreeItem(HWND tree, HTREEITEM item);
