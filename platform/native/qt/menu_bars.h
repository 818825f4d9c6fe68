// Menu bars and popup menus.
#pragma once

#include <QMenuBar>

#include "platform/native/visible.h"

// Makes the menu bar of a top-level window. Commands are posted to it.
QMenuBar *MakeMenuBar(HWND window, QWidget *parent);

// Shows the items' states in it.
void FollowMenu(HWND window, QMenuBar *bar);

// Opens the first menu, as the key F10 does.
void OpenFirstMenu(QMenuBar *bar);

// Entries of the visible half's table.
bool ShowPopupMenu(HMENU menu, POINT place, HWND owner);
void ClosePopupMenu();
