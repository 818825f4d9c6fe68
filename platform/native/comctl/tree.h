// The tree control's items: what a "SysTreeView32" window holds, without a picture of it.
//
// The window's procedure answers the messages that platform/win32/comctl.h declares (TVM_...) and
//   WM_PAINT        nothing is invalid any more, and the visible half is told to draw
//   WM_SETFONT      wParam: the font, which stays the caller's
//   WM_SETFOCUS, WM_KILLFOCUS, WM_RBUTTONDOWN       tell the parent NM_SETFOCUS, NM_KILLFOCUS or
//                   NM_RCLICK (WM_NOTIFY, wParam: the tree's id, lParam: NMHDR)
// with 0. The visible half reads the items through the calls below; what the user does is in
// tree_user.h.
#pragma once

#include <string>

#include "platform/win32/comctl.h"

// One item, as it is shown. The label is in the ANSI code page and stays the tree's: it holds until
// the items change.
struct TreeItemLook {
    const std::string *label;
    int image; // index in the tree's image list, as the program gave it: it may be out of range
    int selectedImage;
};

// Reading the items of a window of that class. A parent of NULL means the top level. Children are
// in the tree's order, from position 0 on. Dead items, positions outside and windows of another
// class give 0, NULL, -1 (a position) and false.
int CountTreeChildren(HWND tree, HTREEITEM parent);
HTREEITEM TreeChildAt(HWND tree, HTREEITEM parent, int position);
HTREEITEM TreeParent(HWND tree, HTREEITEM item);
int TreePosition(HWND tree, HTREEITEM item);
bool GetTreeItemLook(HWND tree, HTREEITEM item, TreeItemLook *look);

// The image list that the tree uses, or NULL. It stays its maker's, who may have destroyed it.
HIMAGELIST TreeImages(HWND tree);

// The item that is selected, or NULL. SelectTreeItem tells nobody.
HTREEITEM TreeSelection(HWND tree);
void SelectTreeItem(HWND tree, HTREEITEM item);
