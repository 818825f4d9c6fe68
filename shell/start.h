// Start-up and shutdown; the entry point runs the message loop between them.
#pragma once

#include "platform/win32.h"

// Makes the drawing objects, the main window and its children, loads the host module, shows the
// window and posts the request to open the file that the command line names; commandLine must
// outlive the message loop. Returns false when there is no main window: nothing is to be looped
// for.
bool StartUp(HINSTANCE instance, char *commandLine, int showCommand);

// Releases what StartUp made and the open file, after the main window is gone.
void ShutDown();
