#include "shell/host.h"

#include "exe/pe_headers.h"
#include "platform/files.h"
#include "platform/win32.h"
#include "program/globals.h"
#include "program/ids.h"
#include "program/texts.h"
#include "shell/folders.h"

#include <cstring>

#define HOST_FILE "VLXPRO.EXE"

// Stores the host module's folder: the one that the settings name, else the current one. Returns
// false for a folder that does not fit: cut, it would be another.
static bool FindHostFolder(char *folder)
{
    char found[MAX_PATH + 1];
    DWORD length = GetPrivateProfileStringA("Vellumax", "ApplicationPath", "", found, sizeof found,
                                            UserSettingsPath("VLXPRO30.INI"));
    if (length == 0)
        length = GetCurrentDirectoryA(sizeof found, found);
    if (length >= MAX_PATH)
        return false;
    memcpy(folder, found, length);
    folder[length] = 0;
    return true;
}

// Stores the host module's path, or the empty text when it does not fit.
static void FindHostPath(char *path)
{
    if (FindHostFolder(path) && EndWithSeparator(path, MAX_PATH) &&
        strlen(path) + sizeof HOST_FILE <= MAX_PATH)
        strcat(path, HOST_FILE);
    else
        path[0] = 0;
}

static void ReportMissingHost()
{
    MessageBoxA(globals.mainWindow, LoadMessageText(IDS_HOST_MISSING), "Message",
                MB_ICONINFORMATION);
    PostMessageA(globals.mainWindow, WM_COMMAND, IDM_EXIT, 0);
}

// The host's code is never to run: a library with an entry point is not loaded, nor is what tells
// late whether it is one.
static bool MayRunCode(const char *path)
{
    BYTE start[16384];
    size_t headers;
    FILE *file = OpenPathForReading(path);
    if (file == nullptr)
        return false; // nothing to load either
    const ByteReader image = OpenBytes(start, fread(start, 1, sizeof start, file));
    fclose(file);
    return !FindPeHeaders(image, &headers) || RunsWhenLoaded(image, headers);
}

void LoadHostModule()
{
    char path[MAX_PATH];
    FindHostPath(path);
    if (GetFileAttributesA(path) == INVALID_FILE_ATTRIBUTES)
        ReportMissingHost();
    globals.hostModule = path[0] != 0 && !MayRunCode(path) ? LoadLibraryA(path) : nullptr;
    if (globals.hostModule == nullptr)
        ReportMissingHost();
}

void FreeHostModule()
{
    FreeLibrary(globals.hostModule);
    globals.hostModule = nullptr;
}
