#include "tests/support/drive_interface.h"

#include "program/globals.h"
#include "program/routines.h"
#include "shell/main_window.h"
#include "tests/support/drive_story.h"
#include "tests/support/story_record.h"

#include <cstring>
#include <filesystem>

using namespace std::literals;

static const std::filesystem::path firstFolder = std::filesystem::current_path();

static const char *WindowName(HWND window)
{
    if (window == nullptr)
        return "nobody";
    if (window == globals.mainWindow)
        return "the window";
    return window == Tree() ? "the tree" : window == Pane() ? "the pane" : "another";
}

static std::string ResourceName(LPCSTR name)
{
    return IS_INTRESOURCE(name) ? std::to_string((UINT_PTR)name) : Plain(name);
}

static const char *ModuleName(HINSTANCE module)
{
    return module == nullptr            ? "the system"
           : module == globals.instance ? "the program"
                                        : "the host";
}

template <typename Handle> static Handle Named(Handle handle, const std::string &name)
{
    if (story.isTelling && handle != nullptr)
        story.names[(const void *)handle] = name;
    return handle;
}

static const char *NameOf(const void *handle)
{
    return story.names.count(handle) != 0 ? story.names[handle].c_str()
           : handle                       ? "unknown"
                                          : "none";
}

template <typename Handle> static Handle Made(Handle handle, const std::string &what)
{
    if (story.isTelling && handle != nullptr)
        story.made[(const void *)handle] = what;
    return handle;
}

static void GaveBack(const void *handle)
{
    story.made.erase(handle);
}

// --- the interface: memory and objects ---

REPLACE(HGLOBAL, GlobalAlloc, UINT flags, SIZE_T bytes)
{
    if (story.isTelling && outside.blocksLeft >= 0 && outside.blocksLeft-- == 0)
        return outside.blocksLeft = 0, nullptr;
    return Made(RealGlobalAlloc(flags, bytes), "a block");
}

REPLACE(HGLOBAL, GlobalReAlloc, HGLOBAL block, SIZE_T bytes, UINT flags)
{
    if (story.isTelling && outside.blocksLeft >= 0 && outside.blocksLeft-- == 0)
        return outside.blocksLeft = 0, nullptr;
    HGLOBAL grown = RealGlobalReAlloc(block, bytes, flags);
    if (grown != nullptr)
        GaveBack(block);
    return Made(grown, "a block");
}

REPLACE(HGLOBAL, GlobalFree, HGLOBAL block)
{
    GaveBack(block);
    return RealGlobalFree(block);
}

// Frees the block, out of our sight where it is the system's.
REPLACE(void, DragFinish, HDROP drop)
{
    GaveBack(drop);
    RealDragFinish(drop);
}

REPLACE(LPVOID, GlobalLock, HGLOBAL block)
{
    LPVOID address = RealGlobalLock(block);
    story.locks += address != nullptr;
    return address;
}

REPLACE(BOOL, GlobalUnlock, HGLOBAL block)
{
    story.locks--;
    return RealGlobalUnlock(block);
}

REPLACE(HFONT, CreateFontA, int height, int width, int escapement, int orientation, int weight,
        DWORD italic, DWORD underline, DWORD strikeOut, DWORD charSet, DWORD outPrecision,
        DWORD clipPrecision, DWORD quality, DWORD pitch, LPCSTR face)
{
    HFONT font =
        RealCreateFontA(height, width, escapement, orientation, weight, italic, underline,
                        strikeOut, charSet, outPrecision, clipPrecision, quality, pitch, face);
    std::string name = std::string(face) + " " + std::to_string(height);
    for (const DWORD other :
         {(DWORD)width, (DWORD)escapement, (DWORD)orientation, (DWORD)weight, italic, underline,
          strikeOut, charSet, outPrecision, clipPrecision, quality, pitch})
        name += other == 0 ? "" : " with " + std::to_string(other);
    if (name.find(" with ") != std::string::npos)
        Tell("a font %s", name.c_str());
    return Named(Made(font, name), name);
}

REPLACE(HBRUSH, CreateSolidBrush, COLORREF color)
{
    return Made(RealCreateSolidBrush(color), "a brush");
}

REPLACE(HBRUSH, CreatePatternBrush, HBITMAP bitmap)
{
    return Made(RealCreatePatternBrush(bitmap), "a pattern");
}

REPLACE(HBITMAP, CreateBitmap, int width, int height, UINT planes, UINT bits, LPCVOID rows)
{
    return Made(RealCreateBitmap(width, height, planes, bits, rows), "a bitmap");
}

REPLACE(HBITMAP, CreateDIBitmap, HDC dc, const BITMAPINFOHEADER *header, DWORD flags, LPCVOID bits,
        const BITMAPINFO *info, UINT usage)
{
    return Made(RealCreateDIBitmap(dc, header, flags, bits, info, usage), "a picture");
}

struct Selections {
    std::set<HGDIOBJ> first, chosen; // what a context came with, and what is selected instead
};
static std::map<HDC, Selections> contexts;

REPLACE(HGDIOBJ, SelectObject, HDC dc, HGDIOBJ object)
{
    HGDIOBJ before = RealSelectObject(dc, object);
    auto &[first, chosen] = contexts[dc];
    if (chosen.erase(before) == 0)
        first.insert(before);
    if (first.count(object) == 0)
        chosen.insert(object);
    return before;
}

REPLACE(BOOL, DeleteObject, HGDIOBJ object)
{
    for (const auto &[dc, selections] : contexts)
        if (selections.chosen.count(object) != 0)
            Tell("%s is deleted while it is selected", story.made[object].c_str());
    GaveBack(object);
    return RealDeleteObject(object);
}

REPLACE(HDC, CreateCompatibleDC, HDC dc)
{
    return Made(RealCreateCompatibleDC(dc), "a context");
}

REPLACE(BOOL, DeleteDC, HDC dc)
{
    GaveBack(dc);
    contexts.erase(dc);
    return RealDeleteDC(dc);
}

REPLACE(HDC, GetDC, HWND window)
{
    return Made(RealGetDC(window), "a window's context");
}

REPLACE(int, ReleaseDC, HWND window, HDC dc)
{
    GaveBack(dc);
    contexts.erase(dc);
    return RealReleaseDC(window, dc);
}

REPLACE(HMENU, CreatePopupMenu)
{
    return Made(RealCreatePopupMenu(), "a menu");
}

REPLACE(BOOL, DestroyMenu, HMENU menu)
{
    GaveBack(menu);
    return RealDestroyMenu(menu);
}

REPLACE(HMODULE, LoadLibraryA, LPCSTR path)
{
    HMODULE module = RealLoadLibraryA(path);
    Tell("load %s%s", Plain(path).c_str(), module == nullptr ? ": failed" : "");
    return Made(module, "a module");
}

REPLACE(BOOL, FreeLibrary, HMODULE module)
{
    GaveBack(module);
    return RealFreeLibrary(module);
}

// --- the interface: windows ---

REPLACE(HCURSOR, LoadCursorA, HINSTANCE module, LPCSTR name)
{
    return Named(RealLoadCursorA(module, name),
                 std::string("cursor ") + ResourceName(name) + " of " + ModuleName(module));
}

REPLACE(HICON, LoadIconA, HINSTANCE module, LPCSTR name)
{
    return Named(RealLoadIconA(module, name),
                 std::string("icon ") + ResourceName(name) + " of " + ModuleName(module));
}

REPLACE(HCURSOR, SetCursor, HCURSOR cursor)
{
    Tell("the mouse shows %s", NameOf(cursor));
    return RealSetCursor(cursor);
}

static const struct {
    UINT message;
    const char *name;
} watched[] = {{WM_CREATE, "create"},      {WM_DESTROY, "destroy"},
               {WM_SIZE, "size"},          {WM_DRAWITEM, "draw"},
               {WM_NOTIFY, "notify"},      {WM_COMMAND, "command"},
               {WM_MOUSEMOVE, "move"},     {WM_LBUTTONDOWN, "press"},
               {WM_LBUTTONUP, "release"},  {WM_PARENTNOTIFY, "press in a child"},
               {WM_OPEN_FILE, "open"},     {WM_QUERYENDSESSION, "session end"},
               {WM_SETFONT, "font"},       {TVM_INSERTITEMA, "insert"},
               {TVM_DELETEITEM, "delete"}, {TVM_SETIMAGELIST, "pictures"}};

static const char *WatchedName(UINT message)
{
    for (const auto &row : watched)
        if (row.message == message)
            return row.name;
    return nullptr;
}

static WNDPROC realProcedure;

static LRESULT CALLBACK TellAnswer(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const LRESULT answer = realProcedure(window, message, wParam, lParam);
    // Which of these two come is the system's matter.
    const bool isUsual = answer == 0 && (message == WM_NOTIFY || message == WM_PARENTNOTIFY);
    if (const char *name = story.isTelling && !isUsual ? WatchedName(message) : nullptr)
        story.answered[name].insert(std::to_string(answer));
    return answer;
}

// What the layer itself and dialogs send is not told.
REPLACE(LRESULT, SendMessageA, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const bool isTold = story.isTelling && story.dialogs == 0 &&
                        (message == WM_OPEN_FILE || message == WM_SETFONT || message >= TV_FIRST);
    if (const char *name = isTold ? WatchedName(message) : nullptr)
        story.sent[name].insert(message == WM_SETFONT
                                    ? NameOf((const void *)wParam) + ", "s + std::to_string(lParam)
                                    : std::to_string(wParam));
    return RealSendMessageA(window, message, wParam, lParam);
}

REPLACE(ATOM, RegisterClassA, const WNDCLASSA *c)
{
    WNDCLASSA watchedClass = *c;
    if (story.isTelling) {
        realProcedure = c->lpfnWndProc;
        watchedClass.lpfnWndProc = TellAnswer;
    }
    Tell("class %s: style %X, %s, %s, menu %s, background %s", Plain(c->lpszClassName).c_str(),
         (unsigned)c->style, NameOf(c->hIcon), NameOf(c->hCursor), Plain(c->lpszMenuName).c_str(),
         c->hbrBackground == globals.backgroundBrush ? "its brush" : "another");
    return RealRegisterClassA(&watchedClass);
}

REPLACE(HWND, CreateWindowExA, DWORD extended, LPCSTR className, LPCSTR text, DWORD style, int x,
        int y, int width, int height, HWND parent, HMENU id, HINSTANCE instance, LPVOID parameter)
{
    if (story.dialogs == 0 && instance == globals.instance)
        Tell("make %s %s: style %08X, id %d, in %s, size %s", Plain(className).c_str(),
             Plain(text).c_str(), (unsigned)style, (int)(INT_PTR)id, WindowName(parent),
             parent == nullptr
                 ? (std::to_string(width) + " x " + std::to_string(height)).c_str()
                 : (std::to_string(x) + " to " +
                    (x + width == GetClientWidth(parent) ? "the edge" : std::to_string(x + width)) +
                    (y == 0 && height == GetClientHeight(parent) ? "" : ", not the height"))
                       .c_str());
    return RealCreateWindowExA(extended, className, text, style, x, y, width, height, parent, id,
                               instance, parameter);
}

REPLACE(void, DragAcceptFiles, HWND window, BOOL accepts)
{
    Tell("%s takes files: %d", WindowName(window), accepts);
    RealDragAcceptFiles(window, accepts);
}

static bool isDialogBeginning; // its procedure makes it ready

REPLACE(HWND, SetFocus, HWND window)
{
    if (isDialogBeginning)
        Tell("focus to %s", Plain(TextOf(window).c_str()).c_str());
    else if (story.dialogs == 0)
        Tell("focus to %s", WindowName(window));
    return RealSetFocus(window);
}

static DLGPROC realDialogProcedure;

static INT_PTR CALLBACK TellDialogAnswer(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    const bool isBegin = message == WM_INITDIALOG;
    isDialogBeginning = isBegin;
    const INT_PTR answer = realDialogProcedure(dialog, message, wParam, lParam);
    isDialogBeginning = false;
    if (isBegin || message == WM_COMMAND || message == WM_DRAWITEM)
        story.answered[isBegin ? "begin of a dialog" : WatchedName(message) + " in a dialog"s]
            .insert(std::to_string(answer));
    return answer;
}

REPLACE(INT_PTR, DialogBoxParamA, HINSTANCE module, LPCSTR name, HWND owner, DLGPROC procedure,
        LPARAM parameter)
{
    Tell("dialog %s of %s over %s", ResourceName(name).c_str(), ModuleName(module),
         WindowName(owner));
    story.dialogs++;
    realDialogProcedure = procedure;
    const INT_PTR result = RealDialogBoxParamA(module, name, owner, TellDialogAnswer, parameter);
    story.dialogs--;
    story.isCovered = true;
    Tell("dialog gives %d", (int)result);
    return result;
}

REPLACE(int, MessageBoxA, HWND owner, LPCSTR text, LPCSTR caption, UINT type)
{
    Tell("box %s %s, type %X, over %s", Plain(caption).c_str(), Plain(text).c_str(), type,
         WindowName(owner));
    story.dialogs++;
    story.isBox = true;
    const int result = RealMessageBoxA(owner, text, caption, type);
    story.isBox = false;
    story.dialogs--;
    story.isCovered = true;
    return result;
}

REPLACE(BOOL, UpdateWindow, HWND window)
{
    if (window == globals.mainWindow)
        Tell("%s is drawn at once", WindowName(window));
    return RealUpdateWindow(window);
}

REPLACE(BOOL, TrackPopupMenu, HMENU menu, UINT flags, int x, int y, int reserved, HWND owner,
        const RECT *keepOut)
{
    POINT cursor = {};
    GetCursorPos(&cursor);
    Tell("popup menu of %s, flags %X, at %s", WindowName(owner), flags,
         cursor.x == x && cursor.y == y ? "the mouse" : "another place");
    const BOOL shown = RealTrackPopupMenu(menu, flags, x, y, reserved, owner, keepOut);
    Tell("%s", allShown.empty() ? "no menu" : allShown.back().c_str());
    story.isCovered = true;
    return shown;
}

// --- the interface: drawing in the pane ---

REPLACE(int, FillRect, HDC dc, const RECT *rect, HBRUSH brush)
{
    RECT client = {};
    GetClientRect(Pane(), &client);
    if (story.isTelling && story.dialogs == 0 && brush == GetStockObject(WHITE_BRUSH) &&
        rect->right == client.right && rect->bottom == client.bottom) {
        story.paneContext = dc;
        story.paneTexts.clear();
        story.panePicture = {};
    }
    return RealFillRect(dc, rect, brush);
}

REPLACE(int, FrameRect, HDC dc, const RECT *rect, HBRUSH brush)
{
    if (story.dialogs != 0)
        Tell("frame from %d, %d in %s", (int)rect->left, (int)rect->top,
             brush == GetSysColorBrush(COLOR_BTNSHADOW) ? "shadow" : "another colour");
    return RealFrameRect(dc, rect, brush);
}

REPLACE(BOOL, BitBlt, HDC dc, int x, int y, int width, int height, HDC source, int sourceX,
        int sourceY, DWORD operation)
{
    if (dc == story.paneContext)
        story.panePicture = {x, y, x + width, y + height};
    return RealBitBlt(dc, x, y, width, height, source, sourceX, sourceY, operation);
}

static void NotePaneText(HDC dc, const std::string &where, LPCSTR text, int count)
{
    if (dc == nullptr || dc != story.paneContext)
        return;
    const std::string shown = count < 0 ? text : std::string(text, (size_t)count);
    story.paneTexts.push_back(where + " in " + TextStyleOf(dc) + ": " + Plain(shown.c_str()));
}

REPLACE(BOOL, TextOutA, HDC dc, int x, int y, LPCSTR text, int count)
{
    NotePaneText(dc, std::to_string(x) + ", " + std::to_string(y), text, count);
    return RealTextOutA(dc, x, y, text, count);
}

REPLACE(int, DrawTextA, HDC dc, LPCSTR text, int count, LPRECT rect, UINT format)
{
    char where[100];
    snprintf(where, sizeof where, "in %d, %d, %d, %d, format %X", (int)rect->left, (int)rect->top,
             (int)rect->right, (int)rect->bottom, format);
    NotePaneText(dc, where, text, count);
    return RealDrawTextA(dc, text, count, rect, format);
}

// --- the interface: what lies outside of the program ---

static void TellChooser(const char *what, const OPENFILENAMEA &request)
{
    story.isCovered = true;
    std::string filters;
    int count = 0;
    for (const char *at = request.lpstrFilter; *at != 0; at += strlen(at) + 1, count++)
        filters += (count % 2 == 0 ? (count == 0 ? "" : "; ") : " ") + std::string(at);
    Tell("%s over %s, of %s%s: filters %s, the %u., folder %s, name %s of %u%s, flags %X", what,
         WindowName(request.hwndOwner), ModuleName(request.hInstance),
         request.lStructSize == OPENFILENAME_SIZE_VERSION_400A ? "" : " in another form",
         Plain(filters.c_str()).c_str(), (unsigned)request.nFilterIndex,
         Plain(request.lpstrInitialDir).c_str(), Plain(request.lpstrFile).c_str(),
         (unsigned)request.nMaxFile, request.lpstrFileTitle != nullptr ? " and alone" : "",
         (unsigned)request.Flags);
}

REPLACE(BOOL, GetOpenFileNameA, LPOPENFILENAMEA request)
{
    TellChooser("open", *request);
    const BOOL chosen = RealGetOpenFileNameA(request);
    if (story.isTelling && chosen && outside.filter != 0)
        request->nFilterIndex = outside.filter;
    return chosen;
}

REPLACE(BOOL, GetSaveFileNameA, LPOPENFILENAMEA request)
{
    TellChooser("save", *request);
    return RealGetSaveFileNameA(request);
}

REPLACE(BOOL, sndPlaySoundA, LPCSTR sound, UINT flags)
{
    if (!story.isTelling)
        return RealsndPlaySoundA(sound, flags);
    if (sound == nullptr)
        Tell("sound stops, flags %X", flags);
    else
        Tell("sound plays, flags %X, size %u: %s", flags,
             (unsigned)(BYTE)sound[4] | (unsigned)(BYTE)sound[5] << 8,
             Plain(std::string(sound, 4).c_str()).c_str());
    return TRUE;
}

REPLACE(BOOL, SHGetPathFromIDListA, LPITEMIDLIST list, LPSTR path)
{
    if (!story.isTelling)
        return RealSHGetPathFromIDListA(list, path);
    Made(list, "a folder");
    strcpy(path, outside.userFolder.c_str());
    return TRUE;
}

REPLACE(void, CoTaskMemFree, LPVOID memory)
{
    GaveBack(memory);
    RealCoTaskMemFree(memory);
}

REPLACE(DWORD, GetTempPathA, DWORD size, LPSTR path)
{
    if (!story.isTelling)
        return RealGetTempPathA(size, path);
    // A file that is left there is told.
    return outside.hasNoTemporaryFolder ? 0 : (DWORD)strlen(strcpy(path, TestFolder().c_str()));
}

REPLACE(HINSTANCE, ShellExecuteA, HWND owner, LPCSTR verb, LPCSTR file, LPCSTR parameters,
        LPCSTR folder, int show)
{
    if (!story.isTelling)
        return RealShellExecuteA(owner, verb, file, parameters, folder, show);
    Tell("start %s %s %s, folder %s, show %d, over %s%s", Plain(verb).c_str(), Plain(file).c_str(),
         Plain(parameters).c_str(), Plain(folder).c_str(), show, WindowName(owner),
         std::filesystem::current_path() == firstFolder ? ", looked for in the user's folder" : "");
    const bool isThere = outside.browser == file;
    return (HINSTANCE)(INT_PTR)(isThere ? 33 : 32);
}

REPLACE(HINSTANCE, FindExecutableA, LPCSTR file, LPCSTR folder, LPSTR path)
{
    if (!story.isTelling)
        return RealFindExecutableA(file, folder, path);
    Tell("application for %s, folder %s", Plain(file).c_str(), Plain(folder).c_str());
    strcpy(path, outside.application.c_str());
    return (HINSTANCE)(INT_PTR)(outside.application.empty() ? 32 : 33);
}

REPLACE(BOOL, CreateProcessA, LPCSTR application, LPSTR line, LPSECURITY_ATTRIBUTES process,
        LPSECURITY_ATTRIBUTES thread, BOOL inherit, DWORD flags, LPVOID environment, LPCSTR folder,
        LPSTARTUPINFOA startup, LPPROCESS_INFORMATION information)
{
    if (!story.isTelling)
        return RealCreateProcessA(application, line, process, thread, inherit, flags, environment,
                                  folder, startup, information);
    Tell("process %s, flags %X, startup %X, show %d", Plain(line).c_str(), (unsigned)flags,
         (unsigned)startup->dwFlags, (int)startup->wShowWindow);
    *information = {};
    return !outside.cannotStart;
}
