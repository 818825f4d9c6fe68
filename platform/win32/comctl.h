// Image lists, and the tree control's items and messages. A dead handle makes a call fail.
#pragma once

#include "platform/win32/types.h"
#include "platform/win32/user.h"

extern "C" {

// --- image lists ---

typedef struct _IMAGELIST *HIMAGELIST;

#define ILC_COLOR8 0x0008

// Makes an empty list of pictures of width x height pixels. The caller destroys it. NULL for an
// empty size, or when there is no room. flags, initial and grow are not looked at.
HIMAGELIST WINAPI ImageList_Create(int width, int height, UINT flags, int initial, int grow);

// FALSE for a dead handle.
BOOL WINAPI ImageList_Destroy(HIMAGELIST list);

// Copies as many pictures as the bitmap is wide for; mask is always NULL. Returns the index of the
// first, -1 for a dead list or bitmap. The bitmap stays the caller's.
int WINAPI ImageList_Add(HIMAGELIST list, HBITMAP image, HBITMAP mask);

// How many pictures a list has; 0 for a dead handle.
int WINAPI ImageList_GetImageCount(HIMAGELIST list);

// --- tree control ---

#define WC_TREEVIEWA "SysTreeView32"

#define TVS_HASBUTTONS 0x0001
#define TVS_HASLINES 0x0002
#define TVS_LINESATROOT 0x0004

typedef struct _TREEITEM *HTREEITEM;

#define TVI_ROOT ((HTREEITEM)(intptr_t)-0x10000)
#define TVI_SORT ((HTREEITEM)(intptr_t)-0xFFFD)

#define TVIF_TEXT 0x0001
#define TVIF_IMAGE 0x0002
#define TVIF_PARAM 0x0004
#define TVIF_SELECTEDIMAGE 0x0020

typedef struct tagTVITEMA {
    UINT mask; // TVIF_: the members that count
    HTREEITEM hItem;
    LPSTR pszText;  // the label, ANSI code page; the caller's, copied
    int cchTextMax; // bytes that pszText holds, when it is to be filled
    int iImage;     // index in the tree's image list
    int iSelectedImage;
    LPARAM lParam; // the program's own value
} TVITEMA;

typedef struct tagTVINSERTSTRUCTA {
    HTREEITEM hParent; // TVI_ROOT or NULL: the top level
    HTREEITEM hInsertAfter;
    TVITEMA item;
} TVINSERTSTRUCTA;

#define TV_FIRST 0x1100

// lParam: TVINSERTSTRUCTA. Answers the new item, NULL for a dead parent. Only TVI_SORT is used: an
// item goes after every sibling whose label is not greater; labels are compared as bytes with A to
// Z folded to lower case (Windows compares by the user's language). n insertions cost n log n in
// total.
#define TVM_INSERTITEMA (TV_FIRST + 0)
#define TVM_INSERTITEM TVM_INSERTITEMA

// lParam: TVI_ROOT: all items go, and with them the selection. Answers TRUE.
#define TVM_DELETEITEM (TV_FIRST + 1)

// wParam: TVSIL_NORMAL; lParam: the image list or NULL. Answers the list the tree held before. The
// tree uses the list, its owner destroys it.
#define TVM_SETIMAGELIST (TV_FIRST + 9)
#define TVSIL_NORMAL 0

// wParam: TVGN_ROOT, TVGN_NEXT or TVGN_CHILD; lParam: the item. Answers an item or NULL.
#define TVM_GETNEXTITEM (TV_FIRST + 10)
#define TVGN_ROOT 0x0000
#define TVGN_NEXT 0x0001
#define TVGN_CHILD 0x0004

// lParam: TVITEMA whose mask names the members to fill, TVIF_TEXT or TVIF_PARAM. Text is cut to
// cchTextMax - 1 bytes and terminated. Answers TRUE, or FALSE for a dead item.
#define TVM_GETITEMA (TV_FIRST + 12)
#define TVM_GETITEM TVM_GETITEMA

// --- what a tree tells its parent ---

// WM_NOTIFY comes for what the user does: a record that begins with NMHDR, NMTREEVIEWA with
// TVN_SELCHANGEDA. A tree's own repainting, and what the program does to its items, tell nothing
// (Windows tells both, in part), nor does the tree select an item by itself when it is given the
// keyboard.
#define NM_CLICK ((UINT)-2)
#define NM_DBLCLK ((UINT)-3)
#define NM_RCLICK ((UINT)-5)
#define NM_SETFOCUS ((UINT)-7)
#define NM_KILLFOCUS ((UINT)-8)
#define TVN_SELCHANGEDA ((UINT)-402)
#define TVN_ITEMEXPANDEDA ((UINT)-406)
#define TVN_KEYDOWN ((UINT)-412)

typedef struct tagNMTREEVIEWA {
    NMHDR hdr;
    TVITEMA itemNew; // its hItem and lParam
} NMTREEVIEWA;

} // extern "C"
