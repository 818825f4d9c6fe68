#include "platform/native/comctl/tree_user.h"

#include "platform/native/comctl/notify.h"
#include "platform/native/comctl/tree.h"

void ReportTreeSelection(HWND tree, HTREEITEM item)
{
    NMTREEVIEWA change = {};
    change.itemNew.mask = TVIF_PARAM;
    change.itemNew.hItem = item;
    if (!SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&change.itemNew)))
        return;
    SelectTreeItem(tree, item);
    NotifyParent(tree, TVN_SELCHANGEDA, &change.hdr);
}

void ReportTreeEvent(HWND tree, UINT code)
{
    NotifyParent(tree, code);
}
