#include "platform/native/user/classes.h"

#include <memory>
#include <strings.h>

#include "platform/native/no_memory.h"
#include "platform/native/user/button.h"
#include "platform/native/user/dialogs.h"
#include "platform/native/user/stand_in.h"
#include "platform/native/user/static_text.h"

using ClassList = std::vector<std::unique_ptr<WindowClass>>;

static std::unique_ptr<WindowClass> MakeSystemClass(LPCSTR name, WNDPROC procedure)
{
    auto made = std::make_unique<WindowClass>();
    made->name = name;
    made->style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    made->procedure = procedure;
    made->isSystems = true;
    return made;
}

static ClassList &Classes()
{
    static ClassList classes;
    if (classes.empty()) {
        classes.push_back(MakeSystemClass("button", ButtonProcedure));
        classes.push_back(MakeSystemClass("static", StaticProcedure));
        for (LPCSTR name : {"edit", "listbox", "scrollbar", "combobox"})
            classes.push_back(MakeSystemClass(name, StandInProcedure));
        classes.push_back(MakeSystemClass(dialogClass, DialogWindowProcedure));
    }
    return classes;
}

void AddSystemClass(LPCSTR name, WNDPROC procedure)
{
    Classes().push_back(MakeSystemClass(name, procedure));
}

static ClassList::iterator FindPlace(LPCSTR name)
{
    ClassList &classes = Classes();
    for (auto place = classes.begin(); place != classes.end(); ++place)
        if (name && !IS_INTRESOURCE(name) && strcasecmp((*place)->name.c_str(), name) == 0)
            return place;
    return classes.end();
}

WindowClass *FindClass(LPCSTR name)
{
    const auto place = FindPlace(name);
    return place == Classes().end() ? nullptr : place->get();
}

static ATOM AddClass(const WNDCLASSA *given)
{
    if (!given->lpszClassName || !*given->lpszClassName || FindClass(given->lpszClassName))
        return 0;
    auto added = std::make_unique<WindowClass>();
    added->name = given->lpszClassName;
    added->style = given->style;
    added->procedure = given->lpfnWndProc;
    added->instance = given->hInstance;
    added->icon = given->hIcon;
    added->cursor = given->hCursor;
    added->background = given->hbrBackground;
    if (given->lpszMenuName)
        added->menuName = given->lpszMenuName;
    static ATOM lastAtom = 0xC000;
    Classes().push_back(std::move(added));
    return ++lastAtom;
}

ATOM WINAPI RegisterClassA(const WNDCLASSA *given)
{
    return UnlessMemoryRunsOut<ATOM>(0, [=] { return AddClass(given); });
}

BOOL WINAPI UnregisterClassA(LPCSTR className, HINSTANCE)
{
    const auto place = FindPlace(className);
    if (place == Classes().end() || (*place)->isSystems || (*place)->windows > 0)
        return FALSE;
    Classes().erase(place);
    return TRUE;
}
