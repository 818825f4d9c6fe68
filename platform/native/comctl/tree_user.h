// What the user does to a tree, reported by the visible half and told to the parent at once
// (WM_NOTIFY, wParam: the tree's id). Nothing happens for a dead tree.
#pragma once

#include "platform/win32/comctl.h"

// The user selects an item; a dead one stays unselected, and nobody is told. The parent gets
// TVN_SELCHANGEDA (lParam: NMTREEVIEWA) after the change.
void ReportTreeSelection(HWND tree, HTREEITEM item);

// A click, a key, an item opened or closed: NM_CLICK, NM_DBLCLK, TVN_KEYDOWN, TVN_ITEMEXPANDEDA
// (lParam: NMHDR).
void ReportTreeEvent(HWND tree, UINT code);
