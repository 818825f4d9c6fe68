#include "shell/open_dialog.h"

#include "platform/files.h"
#include "program/globals.h"

#include <cstring>

static const char filters[] = "CPL files\0*.CPL\0"
                              "DLL files\0*.DLL\0"
                              "EXE files\0*.EXE\0"
                              "VBX files\0*.VBX\0"
                              "All files\0*.CPL;*.DLL;*.EXE;*.VBX\0";

static DWORD rememberedFilter = 5;

int ShowOpenDialog(HWND owner, char *path)
{
    char folder[MAX_PATH + 1];
    char name[MAX_PATH] = "";
    const size_t folderLength = FolderLength(path);
    memcpy(folder, path, folderLength);
    folder[folderLength] = 0;
    EndWithSeparator(folder, sizeof folder);
    OPENFILENAMEA request = {};
    request.lStructSize = OPENFILENAME_SIZE_VERSION_400A;
    request.hwndOwner = owner;
    request.hInstance = globals.instance;
    request.lpstrFilter = filters;
    request.nFilterIndex = rememberedFilter;
    request.lpstrFile = name;
    request.nMaxFile = sizeof name;
    request.lpstrInitialDir = path[0] != 0 ? folder : nullptr;
    request.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY;
    const bool chosen = GetOpenFileNameA(&request) != 0;
    if (chosen) {
        strcpy(path, name);
        rememberedFilter = request.nFilterIndex;
    }
    UpdateWindow(owner);
    return chosen;
}
