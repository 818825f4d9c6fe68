// The resource tree's items: category items, under them one item for each catalogued entry.
// An item's value (its lParam, as a 32-bit number) is the entry's index, NO_ENTRY for a category
// item.
#pragma once

#include "exe/catalog.h"

#define LABEL_SIZE 300 // bytes that hold every item's label
#define NO_ENTRY (-1)  // the value of an item that stands for no entry

// Indices into the tree's image list.
struct TreeImagePair {
    int normal;   // shown while an item is not selected
    int selected; // shown while it is
};

// The pair that every item shows.
extern TreeImagePair treeImages;

// Gives the tree a new list of the two folder pictures, whose indices are stored in images; the
// list it held before is destroyed. Returns 0 on failure, and the tree then keeps what it has. With
// no tree nothing is done and the answer is 1.
int SetTreeImages(HWND tree, TreeImagePair *images);

// Inserts an item in the tree's alphabetical order. level is 1 for a category item (parent
// TVI_ROOT), 2 for a resource item. Returns the item, NULL on failure. With no tree nothing is
// done and the answer is a mark that is not NULL.
HTREEITEM AddTreeItem(HWND tree, const char *label, int level, const TreeImagePair *images,
                      HTREEITEM parent, LONG value);

// Inserts the category item of a ResourceCategory. Answers as AddTreeItem does.
HTREEITEM AddCategoryItem(HWND tree, DWORD category);

// Appends an entry, whose data block is filled, to openCatalog and adds its item under its category
// item. Returns false when it could not be appended: the data block is still the caller's.
bool AddEntry(HWND tree, HTREEITEM categoryItem, const ResourceEntry *entry);

// Gives an entry a data block with a copy of its entry->size bytes, sets isWave and adds it as
// AddEntry does. Returns false when there was no memory, and nothing is left behind.
bool KeepResource(HWND tree, HTREEITEM categoryItem, ResourceEntry *entry, const BYTE *bytes);
