#include "shell/main_window.h"

#include "content/block.h"
#include "dialogs/about.h"
#include "dialogs/manual.h"
#include "exe/catalog.h"
#include "exe/tree_items.h"
#include "program/globals.h"
#include "program/ids.h"
#include "program/routines.h"
#include "program/texts.h"
#include "shell/open_dialog.h"
#include "shell/open_file.h"
#include "shell/save.h"
#include "shell/sound.h"
#include "viewer/pane.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>

#define TITLE_SIZE 264
#define LEAST_SPLIT_POSITION 100
#define NO_BAR (-1)

LONG splitPosition = 180;

static LONG selectedIndex = NO_ENTRY; // value of the item that was selected last
static LONG lastBar = NO_BAR;         // split position at which the drag bar is drawn

// --- title ---

// Writes the title for a name: a text of the string table with a place for the name and one that
// stays empty.
static int FormatTitle(char *title, const char *name)
{
    char format[TITLE_SIZE];
    strcpy(format, LoadMessageText(IDS_TITLE));
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    return snprintf(title, TITLE_SIZE, format, name, "");
#pragma GCC diagnostic pop
}

void SetMainTitle(const char *name)
{
    char title[TITLE_SIZE];
    const int length = FormatTitle(title, name);
    if (length >= TITLE_SIZE) {
        char shortened[TITLE_SIZE];
        const char *end = name + (length - TITLE_SIZE + 1) + strlen("...");
        // Not from the middle of a UTF-8 character.
        while ((*end & 0xC0) == 0x80)
            end++;
        snprintf(shortened, sizeof shortened, "...%s", end);
        FormatTitle(title, shortened);
    }
    SetWindowTextA(globals.mainWindow, title);
}

void SetNoFileTitle()
{
    char name[TITLE_SIZE];
    strcpy(name, LoadMessageText(IDS_NO_FILE));
    SetMainTitle(name);
}

// --- layout ---

static void LayOutChildren(HWND window)
{
    const LONG width = GetClientWidth(window);
    const LONG height = GetClientHeight(window);
    const LONG paneLeft = splitPosition + SPLITTER_MARGIN;
    MoveWindow(GetDlgItem(window, IDC_TREE), 0, 0, splitPosition - SPLITTER_MARGIN, height, TRUE);
    MoveWindow(GetDlgItem(window, IDC_PANE), paneLeft, 0, width - paneLeft, height, TRUE);
}

static bool IsTooSmall(const RECT *outer)
{
    return outer->right - outer->left < MAIN_WINDOW_WIDTH ||
           outer->bottom - outer->top < MAIN_WINDOW_HEIGHT;
}

static void OnSize(HWND window)
{
    RECT outer = {};
    GetWindowRect(window, &outer);
    if (IsTooSmall(&outer)) {
        MoveWindow(window, outer.left, outer.top, MAIN_WINDOW_WIDTH, MAIN_WINDOW_HEIGHT, TRUE);
        GetWindowRect(window, &outer);
        // The move's own size message has laid out the children, unless the move was refused.
        if (!IsTooSmall(&outer))
            return;
    }
    LayOutChildren(window);
}

// --- selection and menu states ---

// Copies the selected entry. Returns false when nothing is selected or the catalogue no longer has
// it.
static bool GetSelectedEntry(ResourceEntry *entry)
{
    return selectedIndex >= 0 && selectedIndex < openCatalog.count &&
           GetEntry(openCatalog.entries, entry, selectedIndex);
}

static void ApplyMenuStates(HWND window)
{
    ResourceEntry entry;
    HMENU menu = GetMenu(window);
    const bool isWave = GetSelectedEntry(&entry) && entry.isWave != 0;
    EnableMenuItem(menu, IDM_SAVE_AS, selectedIndex != NO_ENTRY ? MF_ENABLED : MF_GRAYED);
    EnableMenuItem(menu, IDM_PLAY, isWave ? MF_ENABLED : MF_GRAYED);
}

static void OnSelectionChange(HWND window, const NMTREEVIEWA *notification)
{
    TVITEMA item = {};
    item.mask = TVIF_PARAM;
    item.hItem = notification->itemNew.hItem;
    if (!SendMessageA(GetDlgItem(window, IDC_TREE), TVM_GETITEMA, 0, (LPARAM)&item))
        return;
    selectedIndex = (LONG)item.lParam;
    ApplyMenuStates(window);
    InvalidateRect(GetDlgItem(window, IDC_PANE), nullptr, FALSE);
}

static LRESULT OnNotify(HWND window, WPARAM wParam, LPARAM lParam)
{
    const NMHDR *header = (const NMHDR *)lParam;
    if (header->idFrom != IDC_TREE)
        return DefWindowProcA(window, WM_NOTIFY, wParam, lParam);
    StopSound();
    if (header->code == TVN_SELCHANGEDA)
        OnSelectionChange(window, (const NMTREEVIEWA *)lParam);
    return 0;
}

// --- commands ---

static void EmptyFile(HWND window)
{
    SendMessageA(GetDlgItem(window, IDC_TREE), TVM_DELETEITEM, 0, (LPARAM)TVI_ROOT);
    ReleaseCatalog(&openCatalog);
    SetNoFileTitle();
}

static void OnOpenFile(HWND window, const char *path)
{
    if (path == nullptr || path[0] == 0)
        return;
    if (!ProbeAndRead(GetDlgItem(window, IDC_TREE), path)) {
        EmptyFile(window);
        return;
    }
    selectedIndex = NO_ENTRY;
    ApplyMenuStates(window);
    SetMainTitle(path);
    EnableMenuItem(GetMenu(window), IDM_CLOSE, MF_ENABLED);
}

static void OpenInstead(HWND window, const char *path)
{
    SendMessageA(window, WM_COMMAND, IDM_CLOSE, 0);
    SendMessageA(window, WM_OPEN_FILE, 0, (LPARAM)path);
}

static void OnOpen(HWND window)
{
    char path[MAX_PATH] = "";
    StopSound();
    if (ShowOpenDialog(window, path))
        OpenInstead(window, path);
}

// Of several files that are dropped the first is opened; none while a dialog waits for an answer.
static void OnDropFiles(HWND window, HDROP drop)
{
    HGLOBAL block;
    const UINT size = DragQueryFileA(drop, 0, nullptr, 0) + 1;
    char *path = (char *)AllocateLocked(size, &block);
    if (path != nullptr)
        DragQueryFileA(drop, 0, path, size);
    DragFinish(drop);
    if (path == nullptr)
        return;
    if (path[0] != 0 && IsWindowEnabled(window))
        OpenInstead(window, path);
    GlobalUnlock(block);
    GlobalFree(block);
}

static void OnClose(HWND window)
{
    StopSound();
    EmptyFile(window);
}

static void OnSaveAs(HWND window)
{
    StopSound();
    SaveResource(window, &openCatalog, selectedIndex);
}

static void OnPlay()
{
    ResourceEntry entry;
    StopSound();
    if (GetSelectedEntry(&entry))
        PlaySoundEntry(&entry);
}

static void OnExit(HWND window)
{
    StopSound();
    SendMessageA(window, WM_CLOSE, 0, 0);
}

static void OnAbout(HWND window)
{
    StopSound();
    ShowAboutBox(window);
}

static LRESULT OnCommand(HWND window, UINT id)
{
    switch (id) {
    case IDM_OPEN: OnOpen(window); break;
    case IDM_CLOSE: OnClose(window); break;
    case IDM_SAVE_AS: OnSaveAs(window); break;
    case IDM_PLAY: OnPlay(); break;
    case IDM_EXIT: OnExit(window); break;
    case IDM_HELP: ShowManualTopic(window, "QUILM"); break;
    case IDM_ABOUT: OnAbout(window); break;
    default: break;
    }
    return 0;
}

static LRESULT OnSystemCommand(HWND window, WPARAM wParam, LPARAM lParam)
{
    if ((wParam & 0xFFF0) == SC_CLOSE)
        SendMessageA(window, WM_COMMAND, IDM_EXIT, 0);
    return DefWindowProcA(window, WM_SYSCOMMAND, wParam, lParam);
}

// --- splitter ---

static void XorBar(HDC dc, LONG position, const RECT *client)
{
    Rectangle(dc, position - SPLITTER_MARGIN, client->top, position + SPLITTER_MARGIN + 1,
              client->bottom);
}

// Moves the drag bar from where it was drawn last to the split position.
static void DrawDragBar(HWND window)
{
    // Of each row's word the lower byte is drawn.
    static const WORD checkerboard[] = {0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA};
    RECT client = {};
    HDC dc = GetDC(window);
    GetClientRect(window, &client);
    HBITMAP bitmap = CreateBitmap(8, 8, 1, 1, checkerboard);
    HBRUSH brush = CreatePatternBrush(bitmap);
    HGDIOBJ oldBrush = SelectObject(dc, brush);
    HGDIOBJ oldPen = SelectObject(dc, GetStockObject(NULL_PEN));
    const int oldMode = SetROP2(dc, R2_XORPEN);
    if (lastBar != NO_BAR)
        XorBar(dc, lastBar, &client);
    lastBar = splitPosition;
    XorBar(dc, lastBar, &client);
    SetROP2(dc, oldMode);
    SelectObject(dc, oldPen);
    SelectObject(dc, oldBrush);
    DeleteObject(brush);
    DeleteObject(bitmap);
    ReleaseDC(window, dc);
}

static void OnDragStart(HWND window)
{
    SetCapture(window);
    lastBar = NO_BAR;
    DrawDragBar(window);
}

static LRESULT OnMouseMove(HWND window, WPARAM wParam, LPARAM lParam)
{
    if (GetCapture() != window)
        return DefWindowProcA(window, WM_MOUSEMOVE, wParam, lParam);
    if (LOWORD(lParam) == splitPosition)
        return 0;
    const int16_t half = (int16_t)(GetClientWidth(window) / 2);
    // Left of the window the coordinate is negative.
    const int16_t x = (int16_t)LOWORD(lParam);
    splitPosition = std::max<LONG>(std::min(half, x), LEAST_SPLIT_POSITION);
    DrawDragBar(window);
    return 0;
}

static void OnDragEnd(HWND window)
{
    RECT bar = {};
    GetClientRect(window, &bar);
    bar.left = splitPosition - SPLITTER_MARGIN;
    bar.right = splitPosition + SPLITTER_MARGIN + 1;
    InvalidateRect(window, &bar, TRUE);
    UpdateWindow(window);
    ReleaseCapture();
    PostMessageA(window, WM_SIZE, 0, 0);
}

// --- context menu, drawing ---

// Appends an item that is gray when the main menu's is.
static void AppendAsInMainMenu(HMENU menu, HWND window, UINT id, const char *text)
{
    const UINT state = GetMenuState(GetMenu(window), id, MF_BYCOMMAND);
    AppendMenuA(menu, state & MF_GRAYED, id, text);
}

static void ShowContextMenu(HWND window)
{
    POINT cursor = {};
    GetCursorPos(&cursor);
    HMENU menu = CreatePopupMenu();
    if (menu == nullptr)
        return;
    AppendAsInMainMenu(menu, window, IDM_SAVE_AS, "Save &as...");
    if (WindowFromPoint(cursor) == GetDlgItem(window, IDC_PANE))
        AppendAsInMainMenu(menu, window, IDM_PLAY, "&Play");
    TrackPopupMenu(menu, 0, cursor.x, cursor.y, 0, window, nullptr);
    DestroyMenu(menu);
}

static LRESULT OnParentNotify(HWND window, WPARAM wParam, LPARAM lParam)
{
    if (LOWORD(wParam) != WM_RBUTTONDOWN)
        return DefWindowProcA(window, WM_PARENTNOTIFY, wParam, lParam);
    ShowContextMenu(window);
    return 0;
}

static LRESULT OnDrawItem(HWND window, WPARAM wParam, LPARAM lParam)
{
    const DRAWITEMSTRUCT *item = (const DRAWITEMSTRUCT *)lParam;
    if (item->CtlID != IDC_PANE)
        return DefWindowProcA(window, WM_DRAWITEM, wParam, lParam);
    FillRect(item->hDC, &item->rcItem, (HBRUSH)GetStockObject(WHITE_BRUSH));
    PaintResource(item->hDC, &item->rcItem, openCatalog.entries, openCatalog.count, selectedIndex);
    return 1;
}

static LRESULT OnCreate(HWND window)
{
    ForgetSound();
    CenterOnScreen(window);
    return 0;
}

static LRESULT OnDestroy()
{
    StopSound();
    PostQuitMessage(0);
    return 0;
}

LRESULT CALLBACK MainWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC: return (LRESULT)SetControlColors(window, (HDC)wParam);
    case WM_CREATE: return OnCreate(window);
    case WM_DESTROY: return OnDestroy();
    case WM_SIZE: return OnSize(window), 0;
    case WM_QUERYENDSESSION: return StopSound(), 1;
    case WM_DRAWITEM: return OnDrawItem(window, wParam, lParam);
    case WM_NOTIFY: return OnNotify(window, wParam, lParam);
    case WM_COMMAND: return OnCommand(window, LOWORD(wParam));
    case WM_SYSCOMMAND: return OnSystemCommand(window, wParam, lParam);
    case WM_MOUSEMOVE: return OnMouseMove(window, wParam, lParam);
    case WM_LBUTTONDOWN: return OnDragStart(window), 0;
    case WM_LBUTTONUP: return OnDragEnd(window), 0;
    case WM_DROPFILES: return OnDropFiles(window, (HDROP)wParam), 0;
    case WM_PARENTNOTIFY: return OnParentNotify(window, wParam, lParam);
    case WM_OPEN_FILE: return OnOpenFile(window, (const char *)lParam), 0;
    default: return DefWindowProcA(window, message, wParam, lParam);
    }
}
