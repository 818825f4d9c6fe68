// Program-wide state, filled by shell at start-up and read by everyone. quillmoor-cli fills the
// instance alone.
#pragma once

#include "platform/win32.h"

struct Globals {
    HINSTANCE instance;     // the program's own module
    HWND mainWindow;        // owner of messages and dialogs; NULL until it is made
    HFONT interfaceFont;    // NULL when it could not be made
    HBRUSH backgroundBrush; // COLOR_BTNFACE; NULL before start-up and after shutdown
    HMODULE hostModule;     // VLXPRO.EXE as a module of resources; NULL when it is missing
    char programDirectory[MAX_PATH + 1]; // ends with the system's path separator, or is empty
};

extern Globals globals;
