// Per-user folders, and starting other programs.
#pragma once

#include "platform/win32/types.h"

extern "C" {

// --- folders ---

typedef struct _ITEMIDLIST *LPITEMIDLIST;

// Finds the user's folder for programs' data (on Linux $XDG_CONFIG_HOME or ~/.config). The caller
// frees it with CoTaskMemFree. 0 on success; on failure (here also when the path has MAX_PATH bytes
// or more), and for another number than this, *list is NULL.
#define CSIDL_APPDATA 0x001A
HRESULT WINAPI SHGetSpecialFolderLocation(HWND owner, int folder, LPITEMIDLIST *list);

// Writes the folder's path to path, which holds MAX_PATH bytes. FALSE, with an empty text, for
// NULL.
BOOL WINAPI SHGetPathFromIDListA(LPITEMIDLIST list, LPSTR path);

// Frees what a function here made; NULL is allowed.
void WINAPI CoTaskMemFree(LPVOID memory);

// --- programs ---

// Starts a program with one argument and does not wait for it; verb is "open", folder NULL. A bare
// name is found as the system finds it (on Linux on $PATH, without ".exe"). Above 32 on success; 2
// when there is no such program, 5 when it cannot be started.
HINSTANCE WINAPI ShellExecuteA(HWND owner, LPCSTR verb, LPCSTR file, LPCSTR parameters,
                               LPCSTR folder, int show);

// Finds the application that opens an existing file of HTML and writes its path to path, which
// holds MAX_PATH bytes. Above 32 on success; else path is empty, and the result 2 when there is
// no such file, 31 when nothing opens it. On Linux it is xdg-open, when the desktop has an
// application for HTML.
HINSTANCE WINAPI FindExecutableA(LPCSTR file, LPCSTR folder, LPSTR path);

} // extern "C"
