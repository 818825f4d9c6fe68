#include "shell/start.h"

#include "exe/catalog.h"
#include "platform/files.h"
#include "program/globals.h"
#include "program/ids.h"
#include "program/routines.h"
#include "shell/host.h"
#include "shell/main_window.h"

#define CLASS_NAME "Quillmoor"

static void RegisterMainClass()
{
    WNDCLASSA mainClass = {};
    mainClass.style = CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS;
    mainClass.lpfnWndProc = MainWindowProcedure;
    mainClass.hInstance = globals.instance;
    mainClass.hIcon = LoadIconA(globals.instance, "Quillmoor");
    mainClass.hCursor = LoadCursorA(globals.instance, MAKEINTRESOURCEA(IDC_SPLITTER_CURSOR));
    mainClass.hbrBackground = globals.backgroundBrush;
    mainClass.lpszMenuName = "MainMenu";
    mainClass.lpszClassName = CLASS_NAME;
    RegisterClassA(&mainClass);
}

// A program in a folder that the record cannot hold has no manual; nothing else needs the folder.
static void FindProgramDirectory()
{
    char *directory = globals.programDirectory;
    const DWORD length = GetModuleFileNameA(globals.instance, directory, MAX_PATH);
    directory[length < MAX_PATH ? FolderLength(directory) : 0] = 0;
    if (!EndWithSeparator(directory, sizeof globals.programDirectory))
        directory[0] = 0;
}

static void MakeChildren()
{
    HWND window = globals.mainWindow;
    const LONG paneLeft = splitPosition + SPLITTER_MARGIN;
    CreateWindowExA(0, WC_TREEVIEWA, "",
                    WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL | TVS_HASBUTTONS | TVS_HASLINES |
                        TVS_LINESATROOT,
                    0, 0, splitPosition - SPLITTER_MARGIN, GetClientHeight(window), window,
                    (HMENU)(UINT_PTR)IDC_TREE, globals.instance, nullptr);
    CreateWindowExA(0, "button", "", WS_CHILD | WS_VISIBLE | WS_BORDER | BS_OWNERDRAW, paneLeft, 0,
                    GetClientWidth(window) - paneLeft, GetClientHeight(window), window,
                    (HMENU)(UINT_PTR)IDC_PANE, globals.instance, nullptr);
}

bool StartUp(HINSTANCE instance, char *commandLine, int showCommand)
{
    globals.instance = instance;
    FailWritesPastLimit();
    MakeDrawingObjects();
    RegisterMainClass();
    globals.mainWindow = CreateWindowExA(0, CLASS_NAME, "Vellumax Quillmoor", WS_OVERLAPPEDWINDOW,
                                         CW_USEDEFAULT, CW_USEDEFAULT, MAIN_WINDOW_WIDTH,
                                         MAIN_WINDOW_HEIGHT, nullptr, nullptr, instance, nullptr);
    // Without its window nothing could ever end the program.
    if (globals.mainWindow == nullptr)
        return false;
    FindProgramDirectory();
    MakeChildren();
    DragAcceptFiles(globals.mainWindow, TRUE);
    LoadHostModule();
    if (globals.interfaceFont != nullptr)
        ApplyFontToChildren(globals.mainWindow, globals.interfaceFont);
    ShowWindow(globals.mainWindow, showCommand);
    UpdateWindow(globals.mainWindow);
    SetNoFileTitle();
    PostMessageA(globals.mainWindow, WM_OPEN_FILE, 0, (LPARAM)commandLine);
    SetFocus(globals.mainWindow);
    return true;
}

void ShutDown()
{
    ReleaseCatalog(&openCatalog);
    FreeHostModule();
    DeleteDrawingObjects();
    UnregisterClassA(CLASS_NAME, globals.instance);
    globals = {};
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int showCommand)
{
    if (StartUp(instance, commandLine, showCommand)) {
        MSG message;
        while (GetMessageA(&message, nullptr, 0, 0) > 0) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
    ShutDown();
    return 0;
}
