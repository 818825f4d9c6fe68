// The open and save dialogs.
#pragma once

#include "platform/win32/types.h"

extern "C" {

#define OFN_OVERWRITEPROMPT 0x00000002
#define OFN_HIDEREADONLY 0x00000004
#define OFN_PATHMUSTEXIST 0x00000800
#define OFN_FILEMUSTEXIST 0x00001000
#define OFN_EXPLORER 0x00080000

typedef struct tagOFNA {
    DWORD lStructSize; // OPENFILENAME_SIZE_VERSION_400
    HWND hwndOwner;
    HINSTANCE hInstance;
    LPCSTR lpstrFilter;   // pairs of description and patterns, "*.A;*.B", then an empty text
    DWORD nFilterIndex;   // from 1 on; on return what the user left selected
    LPSTR lpstrFile;      // the name to offer; on return the chosen path
    DWORD nMaxFile;       // bytes of lpstrFile, its terminator included
    LPSTR lpstrFileTitle; // the chosen name alone: nobody reads it, it stays as it was
    DWORD nMaxFileTitle;
    LPCSTR lpstrInitialDir;
    DWORD Flags;
} OPENFILENAMEA, *LPOPENFILENAMEA;

#define OPENFILENAME_SIZE_VERSION_400A (sizeof(OPENFILENAMEA))

// Texts are 8-bit, paths the system's own bytes. Each shows its dialog over the owner and returns
// TRUE when the user confirmed a file: one that exists (open), or one that is new or that the user
// agrees to replace (save). Patterns match without case, no extension is added. A path that
// lpstrFile cannot hold is refused while the dialog is open (Windows closes it and fails). FALSE:
// cancelled, lpstrFile and nFilterIndex are as they were.
BOOL WINAPI GetOpenFileNameA(LPOPENFILENAMEA parameters);
BOOL WINAPI GetSaveFileNameA(LPOPENFILENAMEA parameters);

} // extern "C"
