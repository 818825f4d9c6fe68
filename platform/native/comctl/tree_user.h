// What the user does to a tree, reported by the visible half and told to the parent.
#pragma once

#include "platform/win32/comctl.h"

// The user selects an item; action is TVC_BYMOUSE or TVC_BYKEYBOARD. Returns false when the parent
// refuses it, or the item is dead.
bool ReportTreeSelection(HWND tree, HTREEITEM item, UINT action);

// The user opens or closes an item. Returns false when the parent refuses it.
bool ReportTreeExpansion(HWND tree, HTREEITEM item, bool isOpen);

// A click or a key in the tree: NM_CLICK, NM_DBLCLK or TVN_KEYDOWN.
void ReportTreeEvent(HWND tree, UINT code);
