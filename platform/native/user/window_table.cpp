#include "platform/native/user/window_table.h"

#include <algorithm>
#include <strings.h>

#include "platform/native/handles.h"

static HandleTable<Window, HandleKind::Window> table;

Window *WindowOf(HWND window)
{
    return table.Find(window);
}

Window *AddWindow()
{
    void *handle = table.Add();
    Window *window = table.Find(handle);
    if (window)
        window->self = static_cast<HWND>(handle);
    return window;
}

void RemoveWindow(HWND window)
{
    table.Remove(window);
}

std::vector<HWND> &TopLevelWindows()
{
    static std::vector<HWND> windows;
    return windows;
}

bool IsOfClass(const Window *window, LPCSTR name)
{
    return strcasecmp(window->windowClass->name.c_str(), name) == 0;
}

bool IsShown(const Window *window)
{
    for (; window; window = WindowOf(window->parent)) {
        if (window->isMessageOnly || !(window->style & WS_VISIBLE))
            return false;
        if (!window->parent)
            return true;
    }
    return false;
}

bool TakesInput(const Window *window)
{
    for (; window; window = WindowOf(window->parent))
        if (window->style & WS_DISABLED)
            return false;
    return true;
}

Window *FrameOf(Window *window)
{
    while (window && window->parent)
        window = WindowOf(window->parent);
    return window;
}

bool IsInside(HWND window, HWND ancestor)
{
    while (window && window != ancestor) {
        const Window *record = WindowOf(window);
        window = record ? record->parent : nullptr;
    }
    return window && window == ancestor;
}

void TellChange(const Window *window, WindowChange change)
{
    if (!window->isMessageOnly)
        visible.windowChanged(window->self, change);
}

SIZE ClientSizeOf(const Window *window)
{
    const RECT &rect = window->rect, &around = window->around;
    return {std::max<LONG>(0, rect.right - rect.left - around.left - around.right),
            std::max<LONG>(0, rect.bottom - rect.top - around.top - around.bottom)};
}

POINT ClientOriginOf(const Window *window)
{
    POINT origin = {0, 0};
    for (; window; window = WindowOf(window->parent)) {
        origin.x += window->rect.left + window->around.left;
        origin.y += window->rect.top + window->around.top;
    }
    return origin;
}
