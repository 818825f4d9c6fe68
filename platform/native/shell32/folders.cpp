// The user's folder for programs' data.
#include "platform/native/kernel/paths.h"
#include "platform/win32/shell32.h"

#include <cstdlib>
#include <cstring>

namespace
{

const HRESULT failed = (HRESULT)0x80004005u;

} // namespace

HRESULT WINAPI SHGetSpecialFolderLocation(HWND, int folder, LPITEMIDLIST *list)
{
    // A list is the folder's path, terminated.
    const std::string path = folder == CSIDL_APPDATA ? UserConfigFolder() : "";
    *list = path.empty() ? nullptr : (LPITEMIDLIST)(void *)strdup(path.c_str());
    return *list == nullptr ? failed : 0;
}

BOOL WINAPI SHGetPathFromIDListA(LPITEMIDLIST list, LPSTR path)
{
    path[0] = 0;
    const char *folder = (const char *)(const void *)list;
    if (folder == nullptr || strlen(folder) >= MAX_PATH)
        return FALSE;
    strcpy(path, folder);
    return TRUE;
}

void WINAPI CoTaskMemFree(LPVOID memory)
{
    free(memory);
}
