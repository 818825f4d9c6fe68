#include "platform/native/user/menus.h"

#include "platform/native/handles.h"
#include "platform/native/kernel/code_page.h"
#include "platform/native/kernel/module.h"
#include "platform/native/no_memory.h"
#include "platform/native/user/queue.h"
#include "platform/native/user/window_table.h"
#include "platform/native/visible.h"
#include "platform/win32/kernel.h"
#include "platform/win32/user.h"

static HandleTable<Menu, HandleKind::Menu> menus;

// The popup menu that is shown.
static bool isMenuOpen = false;
static UINT chosenId = 0;

constexpr WORD lastItem = 0x80; // the last item of a menu, in the resource
constexpr int deepestMenu = 8;

// An item is a word of flags, an id unless it is a submenu, and a text; a submenu's items follow.
static void ReadItems(ByteReader *reader, HMENU menu, int depth)
{
    WORD flags = 0;
    while (!(flags & lastItem) && !reader->failed) {
        flags = TakeU16(reader);
        const UINT id = flags & MF_POPUP ? 0 : TakeU16(reader);
        const std::string text = TakeWideText(reader);
        if (reader->failed || depth > deepestMenu)
            break;
        UINT kept = flags & (MF_GRAYED | MF_DISABLED | MF_POPUP | MF_SEPARATOR);
        if (text.empty() && id == 0 && !(flags & MF_POPUP))
            kept |= MF_SEPARATOR;
        std::vector<MenuItem> &items = menus.Find(menu)->items;
        items.push_back({text, id, kept, nullptr});
        if (!(flags & MF_POPUP))
            continue;
        const HMENU submenu = CreatePopupMenu();
        if (!submenu)
            throw std::bad_alloc();
        items.back().submenu = submenu;
        ReadItems(reader, submenu, depth + 1);
    }
}

static MenuItem *FindItem(HMENU handle, UINT id)
{
    Menu *menu = menus.Find(handle);
    if (!menu)
        return nullptr;
    for (MenuItem &item : menu->items) {
        if (item.submenu) {
            if (MenuItem *found = FindItem(item.submenu, id))
                return found;
        } else if (item.id == id && !(item.flags & MF_SEPARATOR)) {
            return &item;
        }
    }
    return nullptr;
}

static bool Holds(HMENU menu, HMENU wanted)
{
    const Menu *record = menus.Find(menu);
    if (!record)
        return false;
    bool holds = menu == wanted;
    for (const MenuItem &item : record->items)
        holds = holds || Holds(item.submenu, wanted);
    return holds;
}

static void TellOwners(HMENU menu)
{
    for (HWND window : TopLevelWindows())
        if (Holds(WindowOf(window)->menu, menu))
            TellChange(WindowOf(window), WindowChange::Menu);
}

const Menu *MenuOf(HMENU menu)
{
    return menus.Find(menu);
}

HMENU LoadMenuResource(HINSTANCE instance, LPCSTR name)
{
    ByteReader reader = OpenResource(instance, name, RT_MENU);
    if (!reader.data)
        return nullptr;
    // A version, 0, and the length of what lies between this header and the items.
    const WORD version = TakeU16(&reader);
    SkipBytes(&reader, TakeU16(&reader));
    const HMENU menu = version == 0 && !reader.failed ? CreatePopupMenu() : nullptr;
    if (menu && !DoesMemorySuffice([&] { ReadItems(&reader, menu, 0); })) {
        DestroyMenu(menu);
        return nullptr;
    }
    return menu;
}

HMENU WINAPI GetMenu(HWND window)
{
    const Window *record = WindowOf(window);
    return record ? record->menu : nullptr;
}

BOOL WINAPI EnableMenuItem(HMENU menu, UINT id, UINT flags)
{
    constexpr UINT states = MF_GRAYED | MF_DISABLED;
    MenuItem *item = FindItem(menu, id);
    if (!item)
        return -1;
    const UINT before = item->flags & states;
    item->flags = (item->flags & ~states) | (flags & states);
    if (before != (item->flags & states))
        TellOwners(menu);
    return static_cast<BOOL>(before);
}

UINT WINAPI GetMenuState(HMENU menu, UINT id, UINT)
{
    const MenuItem *item = FindItem(menu, id);
    return item ? item->flags : static_cast<UINT>(-1);
}

HMENU WINAPI CreatePopupMenu(void)
{
    return static_cast<HMENU>(menus.Add());
}

BOOL WINAPI AppendMenuA(HMENU menu, UINT flags, UINT_PTR id, LPCSTR text)
{
    Menu *record = menus.Find(menu);
    return record && DoesMemorySuffice([=] {
               record->items.push_back({text ? text : "", static_cast<UINT>(id), flags, nullptr});
           });
}

BOOL WINAPI DestroyMenu(HMENU menu)
{
    const Menu *record = menus.Find(menu);
    if (!record)
        return FALSE;
    for (const MenuItem &item : record->items)
        DestroyMenu(item.submenu);
    return menus.Remove(menu);
}

void ReportMenuClosed(UINT id)
{
    isMenuOpen = false;
    chosenId = id;
}

BOOL WINAPI TrackPopupMenu(HMENU menu, UINT, int x, int y, int, HWND owner, const RECT *)
{
    if (!MenuOf(menu) || !WindowOf(owner) || isMenuOpen)
        return FALSE;
    isMenuOpen = true;
    chosenId = 0;
    if (!UnlessMemoryRunsOut(false, [=] { return visible.showMenu(menu, {x, y}, owner); })) {
        isMenuOpen = false;
        return FALSE;
    }
    while (isMenuOpen) {
        MSG message;
        const Taken taken = WaitForMessage(&message);
        if (taken == Taken::Message)
            DispatchMessageA(&message);
        if (taken == Taken::Quit || !WindowOf(owner)) {
            visible.closeMenu();
            isMenuOpen = false;
            chosenId = 0;
        }
    }
    if (chosenId)
        PostMessageA(owner, WM_COMMAND, chosenId, 0);
    return TRUE;
}
