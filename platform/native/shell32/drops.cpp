#include "platform/native/shell32/drops.h"

#include <algorithm>
#include <cstring>

#include "platform/native/no_memory.h"
#include "platform/native/user/window_table.h"
#include "platform/win32.h"

void WINAPI DragAcceptFiles(HWND window, BOOL accepts)
{
    if (Window *record = WindowOf(window))
        record->takesDrops = accepts;
}

bool TakesDrops(HWND window)
{
    const Window *record = WindowOf(window);
    return record && record->takesDrops && TakesInput(record);
}

void ReportDrop(HWND window, POINT place, const std::vector<std::string> &paths)
{
    if (!TakesDrops(window))
        return;
    std::string list;
    if (!DoesMemorySuffice([&] {
            for (const std::string &path : paths)
                list.append(path.c_str(), path.size() + 1);
            list += '\0';
        }))
        return;
    const HGLOBAL drop =
        GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + list.size());
    auto *header = static_cast<DROPFILES *>(GlobalLock(drop));
    if (!header)
        return;
    header->pFiles = sizeof(DROPFILES);
    header->pt = place;
    memcpy(header + 1, list.data(), list.size());
    GlobalUnlock(drop);
    if (!PostMessageA(window, WM_DROPFILES, reinterpret_cast<WPARAM>(drop), 0))
        GlobalFree(drop);
}

UINT WINAPI DragQueryFileA(HDROP drop, UINT index, LPSTR path, UINT size)
{
    const auto *header =
        static_cast<const DROPFILES *>(GlobalLock(reinterpret_cast<HGLOBAL>(drop)));
    if (!header)
        return 0;
    size_t length = 0;
    const char *name = reinterpret_cast<const char *>(header) + header->pFiles;
    if (!header->fWide) {
        for (; index > 0 && *name; --index)
            name += strlen(name) + 1;
        length = strlen(name);
    }
    if (path && size > 0) {
        length = std::min<size_t>(length, size - 1);
        memcpy(path, name, length);
        path[length] = 0;
    }
    GlobalUnlock(reinterpret_cast<HGLOBAL>(drop));
    return static_cast<UINT>(length);
}

void WINAPI DragFinish(HDROP drop)
{
    GlobalFree(reinterpret_cast<HGLOBAL>(drop));
}
