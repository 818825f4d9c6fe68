#include "shell/folders.h"

#include "platform/files.h"
#include "platform/win32.h"

#include <cstring>

static char settingsPath[MAX_PATH];

// Appends a part of the path. Returns false when it does not fit.
static bool Append(const char *part)
{
    if (strlen(settingsPath) + strlen(part) >= sizeof settingsPath)
        return false;
    strcat(settingsPath, part);
    return true;
}

char *UserSettingsPath(const char *name)
{
    LPITEMIDLIST folder;
    settingsPath[0] = 0;
    if (SHGetSpecialFolderLocation(nullptr, CSIDL_APPDATA, &folder) != 0)
        return settingsPath;
    SHGetPathFromIDListA(folder, settingsPath);
    CoTaskMemFree(folder);
    const bool fits = EndWithSeparator(settingsPath, sizeof settingsPath) && Append("Orrindale") &&
                      EndWithSeparator(settingsPath, sizeof settingsPath) && Append(name);
    if (!fits)
        settingsPath[0] = 0;
    return settingsPath;
}
