// The user's folder for programs' data.
#include <cstdlib>
#include <cstring>

#include "platform/native/kernel/paths.h"
#include "platform/native/no_memory.h"
#include "platform/win32/shell32.h"

constexpr HRESULT failed = static_cast<HRESULT>(0x80004005u);

HRESULT WINAPI SHGetSpecialFolderLocation(HWND, int folder, LPITEMIDLIST *list)
{
    // A list is the folder's path, terminated. One that no caller has room for is none.
    *list = UnlessMemoryRunsOut<LPITEMIDLIST>(nullptr, [=]() -> LPITEMIDLIST {
        const std::string path = folder == CSIDL_APPDATA ? UserConfigFolder() : "";
        if (path.empty() || path.size() >= MAX_PATH)
            return nullptr;
        return static_cast<LPITEMIDLIST>(static_cast<void *>(strdup(path.c_str())));
    });
    return *list ? 0 : failed;
}

BOOL WINAPI SHGetPathFromIDListA(LPITEMIDLIST list, LPSTR path)
{
    path[0] = 0;
    const char *folder = static_cast<const char *>(static_cast<const void *>(list));
    if (!folder)
        return FALSE;
    strcpy(path, folder);
    return TRUE;
}

void WINAPI CoTaskMemFree(LPVOID memory)
{
    free(memory);
}
