#include "tests/support/drive_story.h"

#include "program/globals.h"
#include "program/ids.h"
#include "program/routines.h"
#include "shell/main_window.h"
#include "tests/support/drive_interface.h"
#include "tests/support/temp_folder.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>

Outside outside;

// What was told so far, and whether the interface's calls are told now.
static std::vector<std::string> told;
static bool isTelling;
static bool isBox;     // the system's message box is shown, which looks as the system likes
static bool isCovered; // something was shown over the window during the step
static int dialogs;    // that are shown now, inside the calls that show them

// What is drawn in the pane since it was last made white.
static HDC paneContext;
static std::vector<std::string> paneTexts;
static RECT panePicture;

// What was made and not yet given back, with what was made.
static std::map<const void *, std::string> made;
static std::map<const void *, std::string> names; // of cursors, icons and fonts
static int locks;

// How things stood after the last step.
static std::map<std::string, std::string> standing;

static void Replace(std::string &text, const std::string &from, const std::string &to)
{
    for (size_t at = 0; !from.empty() && (at = text.find(from, at)) != std::string::npos;
         at += to.size())
        text.replace(at, from.size(), to);
}

// Ending with a separator, known once the program has started.
static std::string programFolder;
static std::string hostFolder;

static void KnowFolders()
{
    if (globals.programDirectory[0] == 0)
        return;
    programFolder = globals.programDirectory;
    hostFolder =
        programFolder.substr(0, programFolder.find_last_of("/\\", programFolder.size() - 2) + 1);
}

// A text on one line: folders by their names, other bytes than ASCII's as numbers.
static std::string Plain(const char *text)
{
    if (text == nullptr)
        return "none";
    KnowFolders();
    std::string from = text;
    Replace(from, TestFolder(), "{folder}/");
    Replace(from, programFolder, "{program}/");
    Replace(from, hostFolder, "{host}/");
    // An address has slashes alone, and on Windows a third one before the drive.
    std::string inAddress = programFolder;
    std::replace(inAddress.begin(), inAddress.end(), '\\', '/');
    Replace(from, inAddress, "{program}/");
    Replace(from, "file:///{", "file://{");
    Replace(from, "{program}/html\\", "{program}/html/");
    std::string plain;
    for (const char c : from) {
        char number[8];
        snprintf(number, sizeof number, "\\x%02X", (unsigned)(unsigned char)c);
        plain += c >= ' ' && c < 127 ? std::string(1, c) : number;
    }
    return '"' + plain + '"';
}

static void Tell(const char *format, ...) __attribute__((format(printf, 1, 2)));
static void Tell(const char *format, ...)
{
    char line[4000];
    va_list values;
    va_start(values, format);
    vsnprintf(line, sizeof line, format, values);
    va_end(values);
    if (isTelling)
        told.push_back(line);
}

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
    if (isTelling && handle != nullptr)
        names[(const void *)handle] = name;
    return handle;
}

static const char *NameOf(const void *handle)
{
    return names.count(handle) != 0 ? names[handle].c_str() : handle ? "unknown" : "none";
}

template <typename Handle> static Handle Made(Handle handle, const std::string &what)
{
    if (isTelling && handle != nullptr)
        made[(const void *)handle] = what;
    return handle;
}

static void GaveBack(const void *handle)
{
    made.erase(handle);
}

// --- the interface: memory and objects ---

REPLACE(HGLOBAL, GlobalAlloc, UINT flags, SIZE_T bytes)
{
    if (isTelling && outside.blocksLeft >= 0 && outside.blocksLeft-- == 0)
        return outside.blocksLeft = 0, nullptr;
    return Made(RealGlobalAlloc(flags, bytes), "a block");
}

REPLACE(HGLOBAL, GlobalReAlloc, HGLOBAL block, SIZE_T bytes, UINT flags)
{
    if (isTelling && outside.blocksLeft >= 0 && outside.blocksLeft-- == 0)
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

REPLACE(LPVOID, GlobalLock, HGLOBAL block)
{
    LPVOID address = RealGlobalLock(block);
    locks += address != nullptr;
    return address;
}

REPLACE(BOOL, GlobalUnlock, HGLOBAL block)
{
    locks--;
    return RealGlobalUnlock(block);
}

REPLACE(HFONT, CreateFontA, int height, int width, int escapement, int orientation, int weight,
        DWORD italic, DWORD underline, DWORD strikeOut, DWORD charSet, DWORD outPrecision,
        DWORD clipPrecision, DWORD quality, DWORD pitch, LPCSTR face)
{
    HFONT font =
        RealCreateFontA(height, width, escapement, orientation, weight, italic, underline,
                        strikeOut, charSet, outPrecision, clipPrecision, quality, pitch, face);
    const std::string name = std::string(face) + " " + std::to_string(height);
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

REPLACE(BOOL, DeleteObject, HGDIOBJ object)
{
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
    return RealDeleteDC(dc);
}

REPLACE(HDC, GetDC, HWND window)
{
    return Made(RealGetDC(window), "a window's context");
}

REPLACE(int, ReleaseDC, HWND window, HDC dc)
{
    GaveBack(dc);
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

REPLACE(ATOM, RegisterClassA, const WNDCLASSA *c)
{
    Tell("class %s: style %X, %s, %s, menu %s, background %s", Plain(c->lpszClassName).c_str(),
         (unsigned)c->style, NameOf(c->hIcon), NameOf(c->hCursor), Plain(c->lpszMenuName).c_str(),
         c->hbrBackground == globals.backgroundBrush ? "its brush" : "another");
    return RealRegisterClassA(c);
}

REPLACE(HWND, CreateWindowExA, DWORD extended, LPCSTR className, LPCSTR text, DWORD style, int x,
        int y, int width, int height, HWND parent, HMENU id, HINSTANCE instance, LPVOID parameter)
{
    if (dialogs == 0 && instance == globals.instance)
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

REPLACE(HWND, SetFocus, HWND window)
{
    if (dialogs == 0)
        Tell("focus to %s", WindowName(window));
    return RealSetFocus(window);
}

REPLACE(INT_PTR, DialogBoxParamA, HINSTANCE module, LPCSTR name, HWND owner, DLGPROC procedure,
        LPARAM parameter)
{
    Tell("dialog %s of %s over %s", ResourceName(name).c_str(), ModuleName(module),
         WindowName(owner));
    dialogs++;
    const INT_PTR result = RealDialogBoxParamA(module, name, owner, procedure, parameter);
    dialogs--;
    isCovered = true;
    Tell("dialog gives %d", (int)result);
    return result;
}

REPLACE(int, MessageBoxA, HWND owner, LPCSTR text, LPCSTR caption, UINT type)
{
    Tell("box %s %s, type %X, over %s", Plain(caption).c_str(), Plain(text).c_str(), type,
         WindowName(owner));
    dialogs++;
    isBox = true;
    const int result = RealMessageBoxA(owner, text, caption, type);
    isBox = false;
    dialogs--;
    isCovered = true;
    return result;
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
    isCovered = true;
    return shown;
}

// --- the interface: drawing in the pane ---

REPLACE(int, FillRect, HDC dc, const RECT *rect, HBRUSH brush)
{
    RECT client = {};
    GetClientRect(Pane(), &client);
    if (isTelling && dialogs == 0 && brush == GetStockObject(WHITE_BRUSH) &&
        rect->right == client.right && rect->bottom == client.bottom) {
        paneContext = dc;
        paneTexts.clear();
        panePicture = {};
    }
    return RealFillRect(dc, rect, brush);
}

REPLACE(int, FrameRect, HDC dc, const RECT *rect, HBRUSH brush)
{
    if (dialogs != 0)
        Tell("frame from %d, %d in %s", (int)rect->left, (int)rect->top,
             brush == GetSysColorBrush(COLOR_BTNSHADOW) ? "shadow" : "another colour");
    return RealFrameRect(dc, rect, brush);
}

REPLACE(BOOL, BitBlt, HDC dc, int x, int y, int width, int height, HDC source, int sourceX,
        int sourceY, DWORD operation)
{
    if (dc == paneContext)
        panePicture = {x, y, x + width, y + height};
    return RealBitBlt(dc, x, y, width, height, source, sourceX, sourceY, operation);
}

static void NotePaneText(HDC dc, const std::string &where, LPCSTR text, int count)
{
    if (dc != paneContext)
        return;
    const std::string shown = count < 0 ? text : std::string(text, (size_t)count);
    paneTexts.push_back(where + " in " + TextStyleOf(dc) + ": " + Plain(shown.c_str()));
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
    isCovered = true;
    std::string filters;
    int count = 0;
    for (const char *at = request.lpstrFilter; *at != 0; at += strlen(at) + 1, count++)
        filters += (count % 2 == 0 ? (count == 0 ? "" : "; ") : " ") + std::string(at);
    Tell("%s over %s, of %s: filters %s, the %u., folder %s, name %s of %u, flags %X", what,
         WindowName(request.hwndOwner), ModuleName(request.hInstance),
         Plain(filters.c_str()).c_str(), (unsigned)request.nFilterIndex,
         Plain(request.lpstrInitialDir).c_str(), Plain(request.lpstrFile).c_str(),
         (unsigned)request.nMaxFile, (unsigned)request.Flags);
}

REPLACE(BOOL, GetOpenFileNameA, LPOPENFILENAMEA request)
{
    TellChooser("open", *request);
    const BOOL chosen = RealGetOpenFileNameA(request);
    if (isTelling && chosen && outside.filter != 0)
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
    if (!isTelling)
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
    if (!isTelling)
        return RealSHGetPathFromIDListA(list, path);
    strcpy(path, outside.userFolder.c_str());
    return TRUE;
}

REPLACE(HINSTANCE, ShellExecuteA, HWND owner, LPCSTR verb, LPCSTR file, LPCSTR parameters,
        LPCSTR folder, int show)
{
    if (!isTelling)
        return RealShellExecuteA(owner, verb, file, parameters, folder, show);
    Tell("start %s %s %s, folder %s, show %d, over %s", Plain(verb).c_str(), Plain(file).c_str(),
         Plain(parameters).c_str(), Plain(folder).c_str(), show, WindowName(owner));
    const bool isThere = outside.browser == file;
    return (HINSTANCE)(INT_PTR)(isThere ? 33 : 32);
}

REPLACE(HINSTANCE, FindExecutableA, LPCSTR file, LPCSTR folder, LPSTR path)
{
    if (!isTelling)
        return RealFindExecutableA(file, folder, path);
    Tell("application for %s, folder %s", Plain(file).c_str(), Plain(folder).c_str());
    strcpy(path, outside.application.c_str());
    return (HINSTANCE)(INT_PTR)(outside.application.empty() ? 32 : 33);
}

REPLACE(BOOL, CreateProcessA, LPCSTR application, LPSTR line, LPSECURITY_ATTRIBUTES process,
        LPSECURITY_ATTRIBUTES thread, BOOL inherit, DWORD flags, LPVOID environment, LPCSTR folder,
        LPSTARTUPINFOA startup, LPPROCESS_INFORMATION information)
{
    if (!isTelling)
        return RealCreateProcessA(application, line, process, thread, inherit, flags, environment,
                                  folder, startup, information);
    Tell("process %s, flags %X, startup %X, show %d", Plain(line).c_str(), (unsigned)flags,
         (unsigned)startup->dwFlags, (int)startup->wShowWindow);
    *information = {};
    return !outside.cannotStart;
}

// --- what is shown after a step ---

static void TellIfNew(const std::string &what, const std::string &now)
{
    if (standing[what] != now)
        Tell("%s:%s", what.c_str(), now.c_str());
    standing[what] = now;
}

static std::string MenuStates()
{
    static const struct {
        UINT command;
        const char *name;
    } items[] = {{IDM_OPEN, "open"},  {IDM_CLOSE, "close"}, {IDM_SAVE_AS, "save as"},
                 {IDM_PLAY, "play"},  {IDM_EXIT, "exit"},   {IDM_HELP, "help"},
                 {IDM_ABOUT, "about"}};
    std::string states;
    for (const auto &item : items)
        states += IsGray(item.command) ? std::string(" [") + item.name + "]"
                                       : std::string(" ") + item.name;
    return states;
}

static std::string Layout()
{
    RECT outer = {}, tree = {}, pane = {};
    POINT origin = {};
    GetWindowRect(globals.mainWindow, &outer);
    GetWindowRect(Tree(), &tree);
    GetWindowRect(Pane(), &pane);
    ClientToScreen(globals.mainWindow, &origin);
    const LONG right = origin.x + GetClientWidth(globals.mainWindow);
    const LONG bottom = origin.y + GetClientHeight(globals.mainWindow);
    const bool isFilled = tree.left == origin.x && tree.top == origin.y && tree.bottom == bottom &&
                          pane.top == origin.y && pane.bottom == bottom && pane.right == right;
    // Frames are not the same everywhere.
    const std::string size = right - origin.x == STORY_WIDTH && bottom - origin.y == STORY_HEIGHT
                                 ? " as given"
                                 : " " + std::to_string(outer.right - outer.left) + " x " +
                                       std::to_string(outer.bottom - outer.top);
    return size + ", tree to " + std::to_string(tree.right - origin.x) + ", pane from " +
           std::to_string(pane.left - origin.x) + (isFilled ? "" : ", not filled");
}

// The picture's pixels as letters: white is a point.
static std::string Picture()
{
    static const std::map<uint32_t, char> letters = {
        {0xFFFFFF, '.'}, {0x000000, 'k'}, {0xFF0000, 'r'}, {0x00FF00, 'g'},
        {0x0000FF, 'b'}, {0xFFFF00, 'y'}, {0x7F7FFF, 'l'}};
    const RECT &at = panePicture;
    const Pixels pixels = PixelsOf(Pane());
    std::string text = " at " + std::to_string(at.left) + ", " + std::to_string(at.top);
    for (LONG y = at.top; y < at.bottom && y < pixels.height; y++) {
        text += "\n  ";
        for (LONG x = at.left; x < at.right && x < pixels.width; x++) {
            const auto letter = letters.find(pixels.At((int)x, (int)y));
            text += letter == letters.end() ? '?' : letter->second;
        }
    }
    return text;
}

static std::string JoinLines(const std::vector<std::string> &lines)
{
    std::string text;
    for (const std::string &line : lines)
        text += "\n  " + line;
    return text;
}

static std::map<std::string, Bytes> FilesNow()
{
    std::map<std::string, Bytes> files;
    for (const auto &entry : std::filesystem::directory_iterator(TestFolder()))
        // The one that ChooseUncreatable keeps from being read.
        if (entry.is_regular_file() && entry.path().filename() != "protected")
            files[entry.path().filename().string()] = ReadFile(entry.path());
    return files;
}

static std::string Describe(const Bytes &bytes)
{
    uint32_t sum = 2166136261u;
    std::string text;
    for (const unsigned char value : bytes)
        sum = (sum ^ value) * 16777619u;
    for (size_t i = 0; i < std::min<size_t>(bytes.size(), 32); i++) {
        char number[4];
        snprintf(number, sizeof number, " %02X", (unsigned)(unsigned char)bytes[i]);
        text += number;
    }
    char line[200];
    snprintf(line, sizeof line, "%zu bytes, sum %08X:%s", bytes.size(), (unsigned)sum,
             text.c_str());
    return line;
}

static void TellFiles(std::map<std::string, Bytes> &before)
{
    std::map<std::string, Bytes> now = FilesNow();
    for (const auto &[name, bytes] : before)
        if (now.count(name) == 0)
            Tell("file %s is gone", name.c_str());
    for (const auto &[name, bytes] : now)
        if (before.count(name) == 0 || before[name] != bytes)
            Tell("file %s: %s", name.c_str(), Describe(bytes).c_str());
}

static void TellWhatChanged()
{
    if (!IsAlive(globals.mainWindow)) {
        Tell("the window is gone");
        standing.clear();
        paneTexts.clear();
        panePicture = {};
        return;
    }
    TellIfNew("title", " " + Plain(TitleText().c_str()));
    TellIfNew("menu", MenuStates());
    TellIfNew("layout", Layout());
    TellIfNew("held", " " + std::to_string(made.size()) + " things, " + std::to_string(locks) +
                          " of them locked");
    TellIfNew("tree", JoinLines(TreeLabels()));
    // Whether what was covered is painted anew is the system's matter.
    if (isCovered)
        InvalidateRect(Pane(), nullptr, FALSE);
    isCovered = false;
    UpdateWindow(Pane());
    TellIfNew("texts", JoinLines(paneTexts));
    TellIfNew("picture", panePicture.right > panePicture.left ? Picture() : "");
}

// --- the story ---

// The picture down the About box's edge, by some of its pixels.
static void TellStrip(HWND strip)
{
    const COLORREF shadow = GetSysColor(COLOR_BTNSHADOW);
    UpdateWindow(strip);
    const Pixels pixels = PixelsOf(strip);
    const bool isFramed = pixels.At(pixels.width - 1, 150) ==
                          ((shadow & 0xFF) << 16 | (shadow & 0xFF00) | shadow >> 16);
    Tell("its strip is %s, with %06X, %06X, %06X", isFramed ? "framed" : "not framed",
         (unsigned)pixels.At(10, 10), (unsigned)pixels.At(40, 2), (unsigned)pixels.At(30, 150));
}

void TellDialog(HWND dialog)
{
    if (!isTelling || dialogs == 0 || isBox)
        return;
    const std::string text = TextOf(GetDlgItem(dialog, IDC_MESSAGE_TEXT));
    RECT rect = {};
    GetWindowRect(dialog, &rect);
    const LONG x = (GetSystemMetrics(SM_CXSCREEN) - (rect.right - rect.left)) / 2;
    const LONG y = (GetSystemMetrics(SM_CYSCREEN) - (rect.bottom - rect.top)) / 2;
    Tell("it shows %s, %s, a button %s%s", Plain(TextOf(dialog).c_str()).c_str(),
         Plain(text.c_str()).c_str(), Plain(TextOf(GetDlgItem(dialog, IDOK)).c_str()).c_str(),
         rect.left == x && rect.top == y ? ", centred" : "");
    if (HWND strip = GetDlgItem(dialog, IDC_ABOUT_PICTURE))
        TellStrip(strip);
}

void BeginStory()
{
    told.clear();
    made.clear();
    names.clear();
    standing.clear();
    locks = 0;
    outside = {};
    outside.userFolder = TestFolder() + "user";
    isTelling = true;
}

void Step(const std::string &what, const std::function<void()> &act)
{
    told.push_back("");
    told.push_back("> " + what);
    std::map<std::string, Bytes> before = FilesNow();
    act();
    TellWhatChanged();
    TellFiles(before);
}

static std::vector<std::string> LinesOf(const std::string &path)
{
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

// What differs is printed from the first different line to the last; what was told is left beside
// the test program, to be looked at and taken over.
static void Compare(const std::string &name)
{
    std::vector<std::string> now;
    for (const std::string &lines : told) {
        std::istringstream text(lines + "\n");
        for (std::string line; std::getline(text, line);)
            now.push_back(line);
    }
    const std::vector<std::string> expected = LinesOf(STORIES_FOLDER "/" + name + ".txt");
    if (now == expected)
        return;
    std::ofstream left(TOLD_FOLDER "/" + name + ".told.txt", std::ios::binary);
    for (const std::string &line : now)
        left << line << "\n";
    const size_t shorter = std::min(now.size(), expected.size());
    size_t same = 0, end = 0;
    while (same < shorter && now[same] == expected[same])
        same++;
    while (end < shorter - same && now[now.size() - 1 - end] == expected[expected.size() - 1 - end])
        end++;
    std::string difference;
    for (size_t i = same; i < expected.size() - end; i++)
        difference += "- " + expected[i] + "\n";
    for (size_t i = same; i < now.size() - end; i++)
        difference += "+ " + now[i] + "\n";
    ADD_FAILURE() << name << ".txt, after line " << same << ":\n" << difference;
}

void EndStory(const std::string &name)
{
    if (IsAlive(globals.mainWindow))
        Step("end", [] { DestroyWindow(globals.mainWindow); });
    StopProgram();
    for (const auto &[handle, what] : made)
        Tell("left: %s", what.c_str());
    Tell("left: %d locks", locks);
    isTelling = false;
    Compare(name);
}
