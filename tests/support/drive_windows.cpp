#include "tests/support/drive.h"

#include "program/globals.h"
#include "shell/main_window.h"
#include "shell/start.h"
#include "tests/support/canvas.h"
#include "tests/support/drive_interface.h"

#include <cstring>
#include <utility>

#define MENU_CLASS "#32768"
#define DIALOG_CLASS "#32770"
#define MN_GETHMENU_MESSAGE 0x01E1
#define CHOOSER_LIST 0x047C // the name field of an Explorer-style chooser
#define CHOOSER_EDIT 0x0480
#define MESSAGE_BOX_TEXT 0xFFFF
#define LOOK_INTERVAL 10 // milliseconds

static std::string commandLineText;
static HANDLE uncreatable = INVALID_HANDLE_VALUE; // an open file that nobody else can open
static UINT_PTR lookTimer;
static bool isMenuAnswered; // the keys that close it are on their way

void ChooseUncreatable()
{
    const std::string path = TestFile("protected", {'x'});
    uncreatable = CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ChooseNext(path);
    PressNext(IDYES);
}

static std::string ClassOf(HWND window)
{
    char name[40];
    GetClassNameA(window, name, sizeof name);
    return name;
}

std::string TextOf(HWND window)
{
    char text[1000] = "";
    SendMessageA(window, WM_GETTEXT, sizeof text, (LPARAM)text);
    return text;
}

// The front dialog, or the popup menu, of this thread; NULL when there is none.
static BOOL CALLBACK NoteDialog(HWND window, LPARAM found)
{
    const std::string name = ClassOf(window);
    if (!IsWindowVisible(window) || (name != DIALOG_CLASS && name != MENU_CLASS) ||
        (name == DIALOG_CLASS && !IsWindowEnabled(window)))
        return TRUE;
    *(HWND *)found = window;
    return FALSE;
}

static HWND FrontDialog()
{
    HWND window = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), NoteDialog, (LPARAM)&window);
    return window;
}

static HWND ChooserField(HWND dialog)
{
    HWND field = GetDlgItem(dialog, CHOOSER_LIST);
    return field != nullptr ? field : GetDlgItem(dialog, CHOOSER_EDIT);
}

static void AnswerDialog(HWND dialog, const Answer &answer)
{
    if (ChooserField(dialog) == nullptr)
        TellDialog(dialog);
    if (HWND field = ChooserField(dialog)) {
        allShown.push_back("chooser: " + TextOf(field));
        if (!answer.path.empty())
            SendMessageA(field, WM_SETTEXT, 0, (LPARAM)answer.path.c_str());
    } else {
        HWND text = GetDlgItem(dialog, 101);
        allShown.push_back(TextOf(text != nullptr ? text : GetDlgItem(dialog, MESSAGE_BOX_TEXT)));
    }
    SendMessageA(dialog, WM_COMMAND, answer.id, (LPARAM)GetDlgItem(dialog, (int)answer.id));
}

static void AnswerMenu(HWND window, const Answer &answer)
{
    HMENU menu = (HMENU)SendMessageA(window, MN_GETHMENU_MESSAGE, 0, 0);
    std::string items = "menu:";
    int place = -1;
    for (int i = 0; i < GetMenuItemCount(menu); i++) {
        char text[80] = "";
        GetMenuStringA(menu, (UINT)i, text, sizeof text, MF_BYPOSITION);
        const bool gray = GetMenuState(menu, (UINT)i, MF_BYPOSITION) & MF_GRAYED;
        items += gray ? std::string(" [") + text + "]" : std::string(" ") + text;
        if (answer.id != 0 && GetMenuItemID(menu, i) == answer.id)
            place = i;
    }
    allShown.push_back(items);
    for (int i = 0; i <= place; i++)
        PostMessageA(window, WM_KEYDOWN, VK_DOWN, 0);
    PostMessageA(window, WM_KEYDOWN, place < 0 ? VK_ESCAPE : VK_RETURN, 0);
}

// Runs inside whatever loop of the system waits for the user.
static void CALLBACK LookForDialog(HWND, UINT, UINT_PTR, DWORD)
{
    HWND window = FrontDialog();
    if (window == nullptr)
        return;
    const bool isMenu = ClassOf(window) == MENU_CLASS;
    if (isMenu && isMenuAnswered)
        return;
    UINT otherwise = isMenu ? 0 : IDOK;
    if (ChooserField(window) != nullptr)
        otherwise = IDCANCEL;
    const Answer answer = NextAnswer(TextOf(window), otherwise);
    if (!isMenu)
        return AnswerDialog(window, answer);
    isMenuAnswered = true;
    AnswerMenu(window, answer);
}

int RunUntilIdle()
{
    isMenuAnswered = false;
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT)
            return 0;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return 1;
}

// The tests stand in a folder below that of the programs and the host module.
static void EnterProgramFolder()
{
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, sizeof path);
    for (int i = 0; i < 2; i++)
        *strrchr(path, '\\') = 0;
    SetCurrentDirectoryA(path);
}

int StartProgram(const std::string &commandLine, const std::string &folder)
{
    static const LONG firstSplitPosition = splitPosition;
    splitPosition = firstSplitPosition;
    commandLineText = commandLine;
    EnterProgramFolder();
    if (!folder.empty())
        SetCurrentDirectoryA(folder.c_str());
    if (lookTimer == 0)
        lookTimer = SetTimer(nullptr, 0, LOOK_INTERVAL, LookForDialog);
    EXPECT_EQ(StartUp(GetModuleHandleA(nullptr), commandLineText.data(), SW_SHOW), 1);
    return RunUntilIdle();
}

void StopProgram()
{
    if (IsWindow(globals.mainWindow))
        DestroyWindow(globals.mainWindow);
    RunUntilIdle();
    ShutDown();
    ExpectAllAnswered();
    CloseHandle(uncreatable);
    uncreatable = INVALID_HANDLE_VALUE;
}

bool IsAlive(HWND window)
{
    return IsWindow(window);
}

// --- what is painted ---

std::string TextStyleOf(HDC dc)
{
    LOGFONTA font = {};
    GetObjectA(GetCurrentObject(dc, OBJ_FONT), sizeof font, &font);
    return TextStyle(font.lfFaceName, font.lfHeight, GetTextColor(dc),
                     GetBkMode(dc) == TRANSPARENT);
}

Pixels PixelsOf(HWND window)
{
    RECT client;
    GetClientRect(window, &client);
    const Canvas canvas(client.right, client.bottom);
    HDC from = GetDC(window);
    BitBlt(canvas.dc, 0, 0, canvas.width, canvas.height, from, 0, 0, SRCCOPY);
    ReleaseDC(window, from);
    Pixels pixels = {canvas.width, canvas.height, {}};
    for (int y = 0; y < canvas.height; y++)
        for (int x = 0; x < canvas.width; x++) {
            const COLORREF color = canvas.At(x, y);
            pixels.values.push_back((color & 0xFF) << 16 | (color & 0xFF00) | color >> 16);
        }
    return pixels;
}

// --- the interface's calls ---

Replacement::Replacement(const char *name, void *replacement, void **real)
{
    BYTE *module = (BYTE *)GetModuleHandleA(nullptr);
    const IMAGE_NT_HEADERS *headers =
        (const IMAGE_NT_HEADERS *)(module + ((const IMAGE_DOS_HEADER *)module)->e_lfanew);
    const IMAGE_IMPORT_DESCRIPTOR *library =
        (const IMAGE_IMPORT_DESCRIPTOR *)(module + headers->OptionalHeader
                                                       .DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT]
                                                       .VirtualAddress);
    for (; library->Name != 0; library++) {
        const IMAGE_THUNK_DATA *names =
            (const IMAGE_THUNK_DATA *)(module + library->OriginalFirstThunk);
        IMAGE_THUNK_DATA *addresses = (IMAGE_THUNK_DATA *)(module + library->FirstThunk);
        for (; names->u1.AddressOfData != 0; names++, addresses++) {
            const IMAGE_IMPORT_BY_NAME *import =
                (const IMAGE_IMPORT_BY_NAME *)(module + names->u1.AddressOfData);
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal) || strcmp(import->Name, name) != 0)
                continue;
            DWORD protection;
            VirtualProtect(addresses, sizeof *addresses, PAGE_READWRITE, &protection);
            *real = (void *)addresses->u1.Function;
            addresses->u1.Function = (ULONG_PTR)replacement;
            return;
        }
    }
}
