// The open and save dialogs.
#pragma once

#include "platform/native/visible.h"

// An entry of the visible half's table.
bool ChooseFile(FileChoice *choice);
