#include "platform/native/comctl/tree_user.h"

#include "platform/native/comctl/notify.h"
#include "platform/native/comctl/tree.h"

static TVITEMA Describe(HWND tree, HTREEITEM item)
{
    TVITEMA described = {};
    described.mask = TVIF_HANDLE | TVIF_PARAM;
    described.hItem = item;
    SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&described));
    return described;
}

bool ReportTreeSelection(HWND tree, HTREEITEM item, UINT action)
{
    TreeItemLook look;
    if (!GetTreeItemLook(tree, item, &look))
        return false;
    NMTREEVIEWA change = {};
    change.action = action;
    change.itemOld = Describe(tree, TreeSelection(tree));
    change.itemNew = Describe(tree, item);
    if (NotifyParent(tree, TVN_SELCHANGINGA, &change.hdr))
        return false;
    if (!GetTreeItemLook(tree, item, &look))
        return false;
    SelectTreeItem(tree, item);
    NotifyParent(tree, TVN_SELCHANGEDA, &change.hdr);
    return true;
}

bool ReportTreeExpansion(HWND tree, HTREEITEM item, bool isOpen)
{
    NMTREEVIEWA change = {};
    change.action = isOpen ? TVE_EXPAND : TVE_COLLAPSE;
    change.itemNew = Describe(tree, item);
    if (NotifyParent(tree, TVN_ITEMEXPANDINGA, &change.hdr))
        return false;
    NotifyParent(tree, TVN_ITEMEXPANDEDA, &change.hdr);
    return true;
}

void ReportTreeEvent(HWND tree, UINT code)
{
    NotifyParent(tree, code);
}
