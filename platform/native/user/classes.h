// The window classes there are: the controls that the system brings, and those that the program
// registers.
#pragma once

#include "platform/native/user/window_table.h"

// A class by its name without case; NULL when there is none. It stays where it is until it is
// unregistered.
WindowClass *FindClass(LPCSTR name);

// Adds a class of a control library; it stays for good. Called before main, as a library that is
// loaded with the program registers what it brings; the name must not be taken yet.
void AddSystemClass(LPCSTR name, WNDPROC procedure);
