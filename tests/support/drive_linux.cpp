// The layer's table of the visible half is filled with answers and recorders: nothing is shown.
#include "tests/support/drive.h"

#include "platform/native/gdi/device_context.h"
#include "platform/native/user/dialogs.h"
#include "platform/native/user/menus.h"
#include "platform/native/user/queue.h"
#include "platform/native/user/window_table.h"
#include "platform/native/visible.h"
#include "program/globals.h"
#include "shell/main_window.h"
#include "shell/start.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#define MESSAGE_BOX_TEXT 0xFFFF
#define TEXT_ASCENT 11
#define TEXT_DESCENT 3
#define CHARACTER_WIDTH 6

static std::string commandLineText;

void ChooseUncreatable()
{
    ChooseNext(TestFile("protected", {'x'}) + "/file");
}

bool IsAlive(HWND window)
{
    return WindowOf(window) != nullptr;
}

std::string TextOf(HWND window)
{
    const Window *record = WindowOf(window);
    return record != nullptr ? record->text : "";
}

static HWND FrontDialog()
{
    HWND front = nullptr;
    for (HWND window : TopLevelWindows()) {
        const Window *record = WindowOf(window);
        if (record->windowClass->name == dialogClass && IsShown(record) && TakesInput(record))
            front = window;
    }
    return front;
}

static bool AnswerFrontDialog(bool wait)
{
    HWND dialog = FrontDialog();
    if (dialog == nullptr || !wait)
        return true;
    TellDialog(dialog);
    HWND text = GetDlgItem(dialog, 101);
    allShown.push_back(TextOf(text != nullptr ? text : GetDlgItem(dialog, MESSAGE_BOX_TEXT)));
    const UINT id = NextAnswer(allShown.back(), IDOK).id;
    SendMessageA(dialog, WM_COMMAND, id, (LPARAM)GetDlgItem(dialog, (int)id));
    return true;
}

// As a chooser does: an existing file is replaced when the user confirms it, else the chooser goes
// on.
static bool AnswerChooser(FileChoice *choice)
{
    for (;;) {
        allShown.push_back(std::string("chooser: ") + choice->path);
        const Answer answer = NextAnswer(allShown.back(), IDCANCEL);
        if (answer.id != IDOK)
            return false;
        const std::string path = answer.path.empty() ? choice->path : answer.path;
        if (choice->isSave && std::filesystem::exists(path)) {
            allShown.push_back("replace?");
            if (NextAnswer("replace?", IDNO).id != IDYES)
                continue;
        }
        EXPECT_LT(path.size(), choice->pathSize);
        strcpy(choice->path, path.c_str());
        return true;
    }
}

static bool AnswerMenu(HMENU menu, POINT, HWND)
{
    std::string items = "menu:";
    for (const MenuItem &item : MenuOf(menu)->items)
        items += item.flags & MF_GRAYED ? " [" + item.text + "]" : " " + item.text;
    allShown.push_back(items);
    ReportMenuClosed(NextAnswer(items, 0).id);
    return true;
}

static void TellFrame(HWND window, RECT *around)
{
    const bool hasCaption = WindowOf(window)->style & WS_CAPTION;
    *around = hasCaption ? RECT{4, 46, 4, 4} : RECT{};
}

static void TellScreen(SIZE *size)
{
    *size = {1280, 1024};
}

static void MeasureFont(const Font &, FontSize *size)
{
    *size = {TEXT_ASCENT, TEXT_DESCENT, CHARACTER_WIDTH};
}

static int MeasureText(const Font &, LPCSTR, int bytes)
{
    return CHARACTER_WIDTH * bytes;
}

// Fills a block for each letter.
static void DrawLetters(const PixelSurface *surface, const RECT *clip, const Font &, int x, int y,
                        uint32_t pixel, LPCSTR text, int bytes)
{
    for (LONG row = std::max(y, clip->top); row < std::min(y + TEXT_ASCENT, clip->bottom); row++)
        for (LONG i = std::max(x, clip->left); i < clip->right; i++) {
            const int letter = (i - x) / CHARACTER_WIDTH;
            if (letter >= bytes)
                break;
            if (text[letter] != ' ')
                surface->pixels[(size_t)row * surface->stride + (size_t)i] = pixel;
        }
}

// A window's own pixels, then its children's and what lies over them.
Pixels PixelsOf(HWND window)
{
    const Window *record = WindowOf(window);
    const SIZE size = ClientSizeOf(record);
    const POINT origin = ClientOriginOf(record);
    Pixels pixels = {(int)size.cx, (int)size.cy, {}};
    pixels.values.assign((size_t)size.cx * (size_t)size.cy, 0xFFFFFF);
    const auto copy = [&](const PixelSurface &from, POINT at, const RECT &part) {
        for (LONG y = std::max(part.top, -at.y); y < std::min(part.bottom, size.cy - at.y); y++)
            for (LONG x = std::max(part.left, -at.x); x < std::min(part.right, size.cx - at.x); x++)
                pixels.values[(size_t)(y + at.y) * (size_t)size.cx + (size_t)(x + at.x)] =
                    from.pixels[(size_t)y * from.stride + (size_t)x] & 0xFFFFFF;
    };
    const auto copyOwn = [&](const Window *part) {
        const PixelSurface &from = part->pixels.surface;
        const POINT place = ClientOriginOf(part);
        copy(from, {place.x - origin.x, place.y - origin.y}, {0, 0, from.width, from.height});
    };
    copyOwn(record);
    for (HWND child : record->children)
        copyOwn(WindowOf(child));
    for (const RECT &part : record->overlay.covered)
        copy(record->overlay.pixels.surface, {0, 0}, part);
    return pixels;
}

std::string TextStyleOf(HDC dc)
{
    const DeviceContext *context = FindContext(dc);
    const Font *font = FindDrawing<Font>(context->font);
    return TextStyle(font->face, font->height, context->textColor,
                     context->backMode == TRANSPARENT);
}

int RunUntilIdle()
{
    MSG message;
    for (;;) {
        switch (TakeMessage(&message)) {
        case Taken::Message: DispatchMessageA(&message); break;
        case Taken::Nothing: return 1;
        case Taken::Quit: GetMessageA(&message, nullptr, 0, 0); return 0;
        }
    }
}

int StartProgram(const std::string &commandLine, const std::string &folder)
{
    static const LONG firstSplitPosition = splitPosition;
    splitPosition = firstSplitPosition;
    commandLineText = commandLine;
    setenv("SDL_AUDIODRIVER", "dummy", 1); // sounds are played and not heard
    visible = noDisplay;
    visible.runEvents = AnswerFrontDialog;
    visible.frameAround = TellFrame;
    visible.screenSize = TellScreen;
    visible.measureFont = MeasureFont;
    visible.measureText = MeasureText;
    visible.drawText = DrawLetters;
    visible.showMenu = AnswerMenu;
    visible.chooseFile = AnswerChooser;
    // The tests stand in a folder below that of the programs and the host module.
    std::filesystem::current_path(
        folder.empty() ? std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path()
                       : std::filesystem::path(folder));
    EXPECT_EQ(StartUp(GetModuleHandleA(nullptr), commandLineText.data(), SW_SHOW), 1);
    return RunUntilIdle();
}

void StopProgram()
{
    if (IsAlive(globals.mainWindow))
        DestroyWindow(globals.mainWindow);
    RunUntilIdle();
    ShutDown();
    ExpectAllAnswered();
}
