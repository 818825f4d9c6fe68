// Menus: their items, and popup menus while they are shown.
#pragma once

#include <string>
#include <vector>

#include "platform/win32/types.h"

struct MenuItem {
    std::string text; // ANSI code page, & before the mnemonic
    UINT id;          // the command; 0 with MF_POPUP
    UINT flags;       // MF_
    HMENU submenu;    // with MF_POPUP, and ended with this menu; else NULL
};

struct Menu {
    std::vector<MenuItem> items; // from the top
};

// The items behind a handle; NULL for a dead one. They hold until the menu changes.
const Menu *MenuOf(HMENU menu);

// Makes a menu from the module's MENU resource. The caller destroys it. NULL when there is none, or
// its header is wrong; one that ends early has the items before that.
HMENU LoadMenuResource(HINSTANCE instance, LPCSTR name);

// The popup menu that is shown has closed; id is the command of the chosen item, or 0. With none
// shown nothing happens.
void ReportMenuClosed(UINT id);
