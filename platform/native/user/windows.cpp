// Making and ending windows, their texts, and the finding of children.
#include <algorithm>
#include <cstring>

#include "platform/native/user/classes.h"
#include "platform/native/user/geometry.h"
#include "platform/native/user/input.h"
#include "platform/native/user/menus.h"
#include "platform/native/user/painting.h"
#include "platform/native/user/window_table.h"
#include "platform/native/visible.h"
#include "platform/win32/user.h"

// A window below HWND_MESSAGE, or below one that is.
static bool IsMessageOnly(HWND parent)
{
    const Window *record = WindowOf(parent);
    return parent == HWND_MESSAGE || (record && record->isMessageOnly);
}

static void SetFirstRect(Window *window, int x, int y, int width, int height)
{
    if (x == CW_USEDEFAULT)
        x = y = 0;
    if (width == CW_USEDEFAULT)
        width = height = 0;
    window->rect = {x, y, x + width, y + height};
    if (window->parent && window->style & WS_BORDER)
        window->around = {1, 1, 1, 1};
    else if (!window->parent)
        window->around = FrameAround(window);
}

static void JoinFamily(Window *window, HWND parent)
{
    window->isMessageOnly = IsMessageOnly(parent);
    if (window->style & WS_CHILD && WindowOf(parent)) {
        window->parent = parent;
        WindowOf(parent)->children.push_back(window->self);
    } else if (!window->isMessageOnly) {
        window->owner = parent;
        TopLevelWindows().push_back(window->self);
    }
}

static HMENU LoadClassMenu(const WindowClass *windowClass)
{
    return windowClass->menuName.empty()
               ? nullptr
               : LoadMenuResource(windowClass->instance, windowClass->menuName.c_str());
}

// Adds the record of a window that nobody knows of yet. NULL when there is no room.
static Window *MakeRecord(WindowClass *windowClass, LPCSTR text, DWORD style, HWND parent,
                          HMENU menuOrId, HINSTANCE instance)
{
    Window *window = AddWindow();
    if (!window)
        return nullptr;
    window->windowClass = windowClass;
    ++windowClass->windows;
    window->style = style;
    window->text = text ? text : "";
    window->instance = instance;
    JoinFamily(window, parent);
    if (window->parent)
        window->id = static_cast<int>(reinterpret_cast<intptr_t>(menuOrId));
    else
        window->menu = menuOrId ? menuOrId : LoadClassMenu(windowClass);
    return window;
}

HWND WINAPI CreateWindowExA(DWORD, LPCSTR className, LPCSTR text, DWORD style, int x, int y,
                            int width, int height, HWND parent, HMENU menuOrId, HINSTANCE instance,
                            LPVOID)
{
    WindowClass *windowClass = FindClass(className);
    const bool needsParent = (style & WS_CHILD) || (parent && parent != HWND_MESSAGE);
    if (!windowClass || (needsParent && parent != HWND_MESSAGE && !WindowOf(parent)))
        return nullptr;
    // It is shown when it is whole.
    const bool isVisible = style & WS_VISIBLE;
    Window *window = MakeRecord(windowClass, text, style & ~static_cast<DWORD>(WS_VISIBLE), parent,
                                menuOrId, instance);
    if (!window)
        return nullptr;
    const HWND handle = window->self;
    SetFirstRect(window, x, y, width, height);
    TellChange(window, WindowChange::Made);
    if (!window->parent)
        window->around = FrameAround(window);
    SendMessageA(handle, WM_CREATE, 0, 0);
    if (!IsSizedWhenShown(style))
        TellSize(handle);
    if (isVisible && WindowOf(handle))
        ShowWindow(handle, SW_SHOW);
    return WindowOf(handle) ? handle : nullptr;
}

// Tells the window, and then those below it, that they go. Any of them may already be gone when
// its turn comes.
static void SendDestroy(HWND window)
{
    Window *record = WindowOf(window);
    if (!record || record->isDying)
        return;
    record->isDying = true;
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
    std::erase(TopLevelWindows(), window);
    ForgetInput(window);
    LosePixels(window);
    DestroyMenu(record->menu);
    TellChange(record, WindowChange::Gone);
    --record->windowClass->windows;
    RemoveWindow(window);
}

static void DestroyOwned(HWND owner)
{
    const std::vector<HWND> windows = TopLevelWindows();
    for (HWND window : windows) {
        const Window *record = WindowOf(window);
        if (record && record->owner == owner)
            DestroyWindow(window);
    }
}

BOOL WINAPI DestroyWindow(HWND window)
{
    const Window *record = WindowOf(window);
    if (!record)
        return FALSE;
    if (record->isDying)
        return TRUE;
    ShowWindow(window, SW_HIDE);
    DestroyOwned(window);
    SendDestroy(window);
    FreeWindow(window);
    return TRUE;
}

// --- texts ---

BOOL WINAPI SetWindowTextA(HWND window, LPCSTR text)
{
    Window *record = WindowOf(window);
    if (!record)
        return FALSE;
    record->text = text ? text : "";
    TellChange(record, WindowChange::Text);
    if (record->parent)
        InvalidateRect(window, nullptr, TRUE);
    return TRUE;
}

int WINAPI GetWindowTextLengthA(HWND window)
{
    const Window *record = WindowOf(window);
    return record ? static_cast<int>(record->text.size()) : 0;
}

BOOL WINAPI SetDlgItemTextA(HWND window, int id, LPCSTR text)
{
    return SetWindowTextA(GetDlgItem(window, id), text);
}

UINT WINAPI GetDlgItemTextA(HWND window, int id, LPSTR text, int size)
{
    const Window *record = WindowOf(GetDlgItem(window, id));
    if (size <= 0)
        return 0;
    const size_t length = record ? std::min(record->text.size(), static_cast<size_t>(size) - 1) : 0;
    if (record)
        std::memcpy(text, record->text.data(), length);
    text[length] = 0;
    return static_cast<UINT>(length);
}

// --- children ---

HWND WINAPI GetDlgItem(HWND window, int id)
{
    const Window *record = WindowOf(window);
    if (record)
        for (HWND child : record->children)
            if (WindowOf(child)->id == id)
                return child;
    return nullptr;
}

static void ListChildren(const Window *parent, std::vector<HWND> *all)
{
    for (HWND child : parent->children) {
        all->push_back(child);
        ListChildren(WindowOf(child), all);
    }
}

BOOL WINAPI EnumChildWindows(HWND parent, WNDENUMPROC procedure, LPARAM parameter)
{
    const Window *record = WindowOf(parent);
    if (!record)
        return FALSE;
    std::vector<HWND> all;
    ListChildren(record, &all);
    for (HWND child : all)
        if (WindowOf(child) && !procedure(child, parameter))
            return FALSE;
    return TRUE;
}

int WINAPI GetSystemMetrics(int index)
{
    SIZE screen;
    visible.screenSize(&screen);
    return index == SM_CXSCREEN ? screen.cx : index == SM_CYSCREEN ? screen.cy : 0;
}
