// Making and ending windows, their texts, and the finding of children.
#include <algorithm>
#include <cstring>

#include "platform/native/no_memory.h"
#include "platform/native/user/classes.h"
#include "platform/native/user/geometry.h"
#include "platform/native/user/input.h"
#include "platform/native/user/menus.h"
#include "platform/native/user/painting.h"
#include "platform/native/user/queue.h"
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

// Fills the record of a window that nobody knows of yet.
static void FillRecord(Window *window, LPCSTR text, DWORD style, HWND parent, HMENU menuOrId,
                       HINSTANCE instance)
{
    window->style = style;
    window->text = text ? text : "";
    window->instance = instance;
    JoinFamily(window, parent);
    if (window->parent)
        window->id = static_cast<int>(reinterpret_cast<intptr_t>(menuOrId));
    else
        window->menu = menuOrId ? menuOrId : LoadClassMenu(window->windowClass);
}

// Tells everybody of a new window: the visible half, and the window itself.
static void Announce(HWND window)
{
    Window *record = WindowOf(window);
    TellChange(record, WindowChange::Made);
    if (!record->parent)
        record->around = FrameAround(record);
    CallProcedure(window, WM_CREATE, 0, 0);
    record = WindowOf(window);
    if (record && !IsSizedWhenShown(record->style))
        TellSize(window);
}

static void FreeWindow(HWND window);

HWND WINAPI CreateWindowExA(DWORD, LPCSTR className, LPCSTR text, DWORD style, int x, int y,
                            int width, int height, HWND parent, HMENU menuOrId, HINSTANCE instance,
                            LPVOID)
{
    WindowClass *windowClass = FindClass(className);
    const bool needsParent = (style & WS_CHILD) || (parent && parent != HWND_MESSAGE);
    if (!windowClass || (needsParent && parent != HWND_MESSAGE && !WindowOf(parent)))
        return nullptr;
    Window *window = AddWindow();
    if (!window)
        return nullptr;
    window->windowClass = windowClass;
    ++windowClass->windows;
    const HWND handle = window->self;
    const bool isMade = DoesMemorySuffice([=] {
        // It is shown when it is whole.
        FillRecord(window, text, style & ~static_cast<DWORD>(WS_VISIBLE), parent, menuOrId,
                   instance);
        SetFirstRect(window, x, y, width, height);
        Announce(handle);
    });
    if (!isMade)
        FreeWindow(handle);
    else if (style & WS_VISIBLE)
        ShowWindow(handle, SW_SHOW);
    return WindowOf(handle) ? handle : nullptr;
}

// The first child that has not been told yet that it goes; any message may change who is there.
static HWND NextToDie(HWND parent)
{
    if (const Window *record = WindowOf(parent))
        for (HWND child : record->children)
            if (!WindowOf(child)->isDying)
                return child;
    return nullptr;
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
    while (const HWND child = NextToDie(window))
        SendDestroy(child);
}

static void FreeWindow(HWND window)
{
    Window *record = WindowOf(window);
    if (!record)
        return;
    while (!record->children.empty())
        FreeWindow(record->children.front());
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

static HWND NextOwned(HWND owner)
{
    for (HWND window : TopLevelWindows())
        if (WindowOf(window)->owner == owner && !WindowOf(window)->isDying)
            return window;
    return nullptr;
}

BOOL WINAPI DestroyWindow(HWND window)
{
    const Window *record = WindowOf(window);
    if (!record)
        return FALSE;
    if (record->isDying)
        return TRUE;
    ShowWindow(window, SW_HIDE);
    while (const HWND owned = NextOwned(window))
        DestroyWindow(owned);
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
    if (!DoesMemorySuffice([=] { record->text = text ? text : ""; }))
        return FALSE;
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
    if (!DoesMemorySuffice([&] { ListChildren(record, &all); }))
        return FALSE;
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
