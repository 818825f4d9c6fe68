// Menus: their items, and popup menus while they are shown.
#pragma once

#include <string>
#include <vector>

#include "platform/win32/user.h"

struct MenuItem {
    std::string text; // ANSI code page, & before the mnemonic
    UINT id;
    UINT flags;    // MF_
    HMENU submenu; // with MF_POPUP
};

struct Menu {
    std::vector<MenuItem> items;
};

// The items behind a handle; NULL for a dead one. They hold until the menu changes.
const Menu *MenuOf(HMENU menu);

// Makes a menu from the module's MENU resource. The caller destroys it. NULL when there is none.
HMENU LoadMenuResource(HINSTANCE instance, LPCSTR name);

// The popup menu that is shown has closed; id is that of the chosen item, or 0.
void ReportMenuClosed(UINT id);
