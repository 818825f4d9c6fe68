// The host module: the executable of the sibling application Vellumax, whose dialog template
// "MessageBox" and bitmap 9004 the program uses. Only its resources are read.
#pragma once

// Finds VLXPRO.EXE in the folder that the sibling application's settings name (ApplicationPath in
// the section Vellumax of VLXPRO30.INI), else in the current folder, and loads it into
// globals.hostModule; a library with an entry point is not loaded, for its code would run. When the
// file is missing, and when it is not loaded, says so in the system's message box and posts the
// Exit command to the main window: once or twice.
void LoadHostModule();

// Frees the module and forgets it.
void FreeHostModule();
