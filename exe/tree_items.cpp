#include "exe/tree_items.h"

#include "content/block.h"
#include "program/globals.h"
#include "program/ids.h"

#include <cstdio>
#include <cstring>

#define IMAGE_WIDTH 16
#define IMAGE_HEIGHT 14

TreeImagePair treeImages;

static int AddFolderImage(HIMAGELIST list, int bitmapId)
{
    HBITMAP bitmap = LoadBitmapA(globals.instance, MAKEINTRESOURCEA(bitmapId));
    const int index = ImageList_Add(list, bitmap, nullptr);
    DeleteObject(bitmap);
    return index;
}

int SetTreeImages(HWND tree, TreeImagePair *images)
{
    if (tree == nullptr)
        return 1;
    HIMAGELIST list = ImageList_Create(IMAGE_WIDTH, IMAGE_HEIGHT, ILC_COLOR8, 2, 0);
    if (list == nullptr)
        return 0;
    images->normal = AddFolderImage(list, IDB_FOLDER_CLOSED);
    images->selected = AddFolderImage(list, IDB_FOLDER_SELECTED);
    if (ImageList_GetImageCount(list) < 2) {
        ImageList_Destroy(list);
        return 0;
    }
    HIMAGELIST before =
        (HIMAGELIST)SendMessageA(tree, TVM_SETIMAGELIST, TVSIL_NORMAL, (LPARAM)list);
    if (before != nullptr)
        ImageList_Destroy(before);
    return 1;
}

HTREEITEM AddTreeItem(HWND tree, const char *label, int level, const TreeImagePair *images,
                      HTREEITEM parent, LONG value)
{
    if (tree == nullptr)
        return TVI_ROOT;
    TVINSERTSTRUCTA insert = {};
    insert.hParent = level == 1 ? TVI_ROOT : parent;
    insert.hInsertAfter = TVI_SORT;
    insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
    insert.item.pszText = const_cast<LPSTR>(label);
    insert.item.cchTextMax = (int)strlen(label);
    insert.item.iImage = images->normal;
    insert.item.iSelectedImage = images->selected;
    insert.item.lParam = value;
    return (HTREEITEM)SendMessageA(tree, TVM_INSERTITEM, 0, (LPARAM)&insert);
}

HTREEITEM AddCategoryItem(HWND tree, DWORD category)
{
    return AddTreeItem(tree, CategoryLabel(category), 1, &treeImages, TVI_ROOT, NO_ENTRY);
}

bool AddEntry(HWND tree, HTREEITEM categoryItem, const ResourceEntry *entry)
{
    const LONG index = openCatalog.count;
    if (!AppendEntry(&openCatalog, entry))
        return false;
    if (tree != nullptr) {
        char label[LABEL_SIZE];
        snprintf(label, sizeof label, "%s (%lu bytes)", entry->name, (unsigned long)entry->size);
        // What cannot be listed is not there.
        if (AddTreeItem(tree, label, 2, &treeImages, categoryItem, index) == nullptr) {
            openCatalog.count--;
            return false;
        }
    }
    return true;
}

bool KeepResource(HWND tree, HTREEITEM categoryItem, ResourceEntry *entry, const BYTE *bytes)
{
    BYTE *copy = (BYTE *)AllocateLocked(entry->size, &entry->data);
    if (copy == nullptr)
        return false;
    memcpy(copy, bytes, entry->size);
    ProbeWave(entry, copy);
    GlobalUnlock(entry->data);
    if (AddEntry(tree, categoryItem, entry))
        return true;
    GlobalFree(entry->data);
    return false;
}
