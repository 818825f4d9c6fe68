// The open and save dialogs.
#pragma once

#include "platform/native/visible.h"

// The entry of the visible half's table: shows Qt's own chooser over the owner, or in a Flatpak
// that of the desktop's portal, and loops over messages until it closes. False also when the owner
// or the program ends meanwhile.
bool ChooseFile(FileChoice *choice);
