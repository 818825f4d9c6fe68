#include "platform/native/user/windows.h"

#include <algorithm>
#include <unordered_map>

#include "platform/native/user/classes.h"

// Handles count up and are never given twice, so that a dead one never means another window.
static std::unordered_map<uintptr_t, std::unique_ptr<Window>> windows;
static uintptr_t lastHandle = 0;

Window *WindowOf(HWND window)
{
    const auto found = windows.find(reinterpret_cast<uintptr_t>(window));
    return found == windows.end() ? nullptr : found->second.get();
}

HWND WINAPI CreateWindowExA(DWORD, LPCSTR className, LPCSTR text, DWORD style, int, int, int, int,
                            HWND parent, HMENU, HINSTANCE, LPVOID)
{
    const WNDPROC procedure = ProcedureOfClass(className);
    const bool hasParent = parent && parent != HWND_MESSAGE;
    if (!procedure || (hasParent && !WindowOf(parent)))
        return nullptr;
    auto made = std::make_unique<Window>();
    const HWND handle = reinterpret_cast<HWND>(++lastHandle);
    made->self = handle;
    made->procedure = procedure;
    made->style = style;
    made->parent = hasParent ? parent : nullptr;
    made->text = text ? text : "";
    windows[lastHandle] = std::move(made);
    if (hasParent)
        WindowOf(parent)->children.push_back(handle);
    if (SendMessageA(handle, WM_CREATE, 0, 0) == -1) {
        DestroyWindow(handle);
        return nullptr;
    }
    return WindowOf(handle) ? handle : nullptr;
}

// Tells the window and then those below it that they go. Any of them may already be gone when its
// turn comes.
static void SendDestroy(HWND window)
{
    Window *record = WindowOf(window);
    if (!record || record->dying)
        return;
    record->dying = true;
    SendMessageA(window, WM_DESTROY, 0, 0);
    record = WindowOf(window);
    if (!record)
        return;
    const std::vector<HWND> children = record->children;
    for (HWND child : children)
        SendDestroy(child);
}

static void FreeWindow(HWND window)
{
    Window *record = WindowOf(window);
    if (!record)
        return;
    const std::vector<HWND> children = record->children;
    for (HWND child : children)
        FreeWindow(child);
    if (Window *parent = WindowOf(record->parent))
        std::erase(parent->children, window);
    windows.erase(reinterpret_cast<uintptr_t>(window));
}

BOOL WINAPI DestroyWindow(HWND window)
{
    Window *record = WindowOf(window);
    if (!record)
        return FALSE;
    if (record->dying)
        return TRUE;
    SendDestroy(window);
    FreeWindow(window);
    return TRUE;
}

LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const Window *record = WindowOf(window);
    return record ? record->procedure(window, message, wParam, lParam) : 0;
}

LRESULT WINAPI DefWindowProcA(HWND, UINT, WPARAM, LPARAM)
{
    return 0;
}
