// Per-user folders, starting other programs, and files that are dropped on a window.
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

// --- dropped files ---

// Whether files can be dropped on the window. Each drop is posted as WM_DROPFILES, whose wParam is
// an HDROP that the receiver frees; a window that takes no input gets none.
void WINAPI DragAcceptFiles(HWND window, BOOL accepts);

// What an HDROP is: a movable block that begins so. The paths follow at an offset of `pFiles`
// bytes, each terminated, an empty one after the last; of 16-bit units when fWide is not 0.
typedef struct _DROPFILES {
    DWORD pFiles;
    POINT pt; // where they were dropped, in the client area
    BOOL fNC;
    BOOL fWide;
} DROPFILES, *LPDROPFILES;
DECLARE_HANDLE(HDROP);

// Writes a path, cut to size - 1 bytes, and returns how many bytes it has there; without room
// (path NULL) its whole length. 0 when there is no such file. This layer's own drops have 8-bit
// paths; those of 16-bit units have none here.
UINT WINAPI DragQueryFileA(HDROP drop, UINT index, LPSTR path, UINT size);

void WINAPI DragFinish(HDROP drop);

} // extern "C"
