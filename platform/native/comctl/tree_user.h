// What the user does to a tree, reported by the visible half and told to the parent.
#pragma once

#include "platform/win32/comctl.h"

// The user selects an item; a dead one stays unselected.
void ReportTreeSelection(HWND tree, HTREEITEM item);

// A click, a key, an item opened or closed: NM_CLICK, NM_DBLCLK, TVN_KEYDOWN, TVN_ITEMEXPANDEDA.
void ReportTreeEvent(HWND tree, UINT code);
