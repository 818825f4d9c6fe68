// Menu bars and popup menus.
#pragma once

#include <QMenuBar>

#include "platform/win32/types.h"

// Makes the menu bar of a top-level window's menu. It belongs to the parent widget. A chosen
// command is posted to the window (WM_COMMAND, wParam: its id).
QMenuBar *MakeMenuBar(HWND window, QWidget *parent);

// Shows in the window's bar which items are enabled now.
void FollowMenu(HWND window, QMenuBar *bar);

// Opens the bar's first menu, as the key F10 does.
void OpenFirstMenu(QMenuBar *bar);

// Entries of the visible half's table. The Qt menu that is shown belongs to the owner's widget and
// is deleted when it has closed.
bool ShowPopupMenu(HMENU menu, POINT place, HWND owner);
void ClosePopupMenu();
