// The window when memory or the disk fails it: what failed is told or silent, nothing is lost or
// left, and the next try does it.
#include "exe/catalog.h"
#include "export/formats.h"
#include "platform/native/comctl/tree.h"
#include "platform/native/comctl/tree_user.h"
#include "platform/native/qt/display.h"
#include "platform/native/shell32/drops.h"
#include "platform/native/user/dialogs.h"
#include "platform/native/user/input.h"
#include "platform/native/user/menus.h"
#include "platform/native/user/queue.h"
#include "platform/native/user/window_table.h"
#include "platform/native/visible.h"
#include "program/globals.h"
#include "program/ids.h"
#include "samples/builder/builder.h"
#include "shell/main_window.h"
#include "shell/start.h"
#include "tests/faults/failing.h"
#include "tests/faults/handles.h"
#include "tests/support/temp_folder.h"

#include <QApplication>
#include <QFileDialog>
#include <QWidget>
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

namespace fs = std::filesystem;

// --- the user, who needs no memory ---

static int dialogsShown;
static int turnsLeft; // until a loop that waits for nothing is given up
static char chosenPath[MAX_PATH];
static UINT chosenCommand; // in a menu

static HWND FrontDialog()
{
    for (HWND window : TopLevelWindows()) {
        const Window *record = WindowOf(window);
        if (record->windowClass->name == dialogClass && IsShown(record) && TakesInput(record))
            return window;
    }
    return nullptr;
}

// Of the real display; none for the tests' own.
static bool (*runDisplay)(bool);
static bool (*realChooser)(FileChoice *);

// Closes the menu, and cancels the chooser, that shows.
static void RunRealDisplay()
{
    runDisplay(false);
    if (QWidget *menu = QApplication::activePopupWidget())
        menu->close();
    if (auto *chooser = dynamic_cast<QFileDialog *>(QApplication::activeModalWidget()))
        chooser->reject();
}

static bool AnswerDialog(bool wait)
{
    if (runDisplay != nullptr)
        RunRealDisplay();
    HWND dialog = FrontDialog();
    if (dialog != nullptr && wait) {
        dialogsShown++;
        SendMessageA(dialog, WM_COMMAND, IDOK, 0);
    }
    return --turnsLeft > 0;
}

static bool AnswerChooser(FileChoice *choice)
{
    strcpy(choice->path, chosenPath);
    return true;
}

static bool AnswerMenu(HMENU, POINT, HWND)
{
    ReportMenuClosed(chosenCommand);
    return true;
}

static void DrawBlock(const PixelSurface *surface, const RECT *clip, const Font &, int x, int y,
                      uint32_t pixel, LPCSTR, int bytes)
{
    for (LONG row = std::max(y, clip->top); row < std::min(y + 10, clip->bottom); row++)
        for (LONG i = std::max(x, clip->left); i < std::min(x + 6 * bytes, clip->right); i++)
            surface->pixels[(size_t)row * surface->stride + (size_t)i] = pixel;
}

static void RunUntilIdle()
{
    MSG message;
    turnsLeft = 1000;
    for (int idle = runDisplay != nullptr ? 0 : 2; idle < 3;) {
        if (TakeMessage(&message) == Taken::Message) {
            DispatchMessageA(&message);
            continue;
        }
        if (runDisplay != nullptr)
            visible.runEvents(false);
        idle++;
    }
}

// The tests' own display, which draws nothing but lines of blocks.
static void UseOwnDisplay()
{
    visible = noDisplay;
    visible.showMenu = AnswerMenu;
    visible.drawText = DrawBlock;
    runDisplay = nullptr;
}

struct EndOfDisplay : testing::Environment {
    void TearDown() override
    {
        DetachDisplay();
    }
};

// Qt's, without a screen. The application is made once: Qt does not like another.
static void UseRealDisplay()
{
    static const VisibleHalf real = [] {
        static char name[] = "fault_tests", *arguments[] = {name, nullptr};
        static int count = 1;
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        AttachDisplay(&count, arguments);
        testing::AddGlobalTestEnvironment(new EndOfDisplay);
        return visible;
    }();
    visible = real;
    runDisplay = real.runEvents;
    realChooser = real.chooseFile;
}

// --- the program ---

struct WindowFaults : testing::TestWithParam<bool> {
    // With the real display only what our own code asks for fails, and what Qt keeps is not
    // counted.
    const bool isReal = GetParam();
    const Failing allocations = isReal ? Failing::OwnAllocations : Failing::Allocations;
    TempFolder folder;
    std::string file;
    char commandLine[1] = "";

    WindowFaults()
    {
        setenv("SDL_AUDIODRIVER", "dummy", 1); // sounds are played and not heard
        fs::current_path(fs::read_symlink("/proc/self/exe").parent_path().parent_path());
        isReal ? UseRealDisplay() : UseOwnDisplay();
        visible.runEvents = AnswerDialog;
        visible.chooseFile = AnswerChooser;
        turnsLeft = 1000;
        file = folder.Write("kinds.dll", BuildKinds());
        strcpy(chosenPath, file.c_str());
    }

    ~WindowFaults() override
    {
        visible = noDisplay;
    }

    static Bytes BuildKinds()
    {
        const Picture picture = MakePicture(20, 10, 0xFFFF0000);
        WaveDescription sound;
        sound.samples = Bytes(20, 7);
        Bytes longSound = MakeWave(sound);
        longSound[4] += 8; // more than there is
        return BuildPe({.resources = {{2, 1, MakeDib(picture, 24)},
                                      {2, 2, MakeDib(picture, 8, DibForm::RunLength)},
                                      {3, 3, MakeIconImage(MakePicture(32, 32, 0xFF0000FF), 4)},
                                      {3, 4, MakeIconImage(MakePicture(32, 32, 0xFF0000FF), 32)},
                                      {3, 5, MakePng(picture)},
                                      {6, 6, MakeStringBlock({u"", u"One", u"Two\tlines\r\n"})},
                                      {10, 7, MakeWave(sound)},
                                      {10, 8, longSound},
                                      {10, 9, {1, 2, 3, 'A', 'z'}}}})
            .bytes;
    }

    bool Start()
    {
        const bool isStarted = StartUp(GetModuleHandleA(nullptr), commandLine, SW_SHOW);
        RunUntilIdle();
        return isStarted;
    }

    static void Stop()
    {
        if (WindowOf(globals.mainWindow) != nullptr)
            DestroyWindow(globals.mainWindow);
        MSG message;
        RunUntilIdle();
        if (TakeMessage(&message) == Taken::Quit)
            GetMessageA(&message, nullptr, 0, 0);
        ShutDown();
    }
};

static void Command(UINT id)
{
    SendMessageA(globals.mainWindow, WM_COMMAND, id, 0);
    RunUntilIdle();
}

static HWND Tree()
{
    return GetDlgItem(globals.mainWindow, IDC_TREE);
}

static HWND Pane()
{
    return GetDlgItem(globals.mainWindow, IDC_PANE);
}

// The item of the resource with that number, whose label begins with it.
static HTREEITEM ItemOf(char number)
{
    for (int i = 0; i < CountTreeChildren(Tree(), TVI_ROOT); i++) {
        HTREEITEM category = TreeChildAt(Tree(), TVI_ROOT, i);
        for (int j = 0; j < CountTreeChildren(Tree(), category); j++) {
            HTREEITEM item = TreeChildAt(Tree(), category, j);
            TreeItemLook look;
            if (GetTreeItemLook(Tree(), item, &look) && (*look.label)[0] == number)
                return item;
        }
    }
    return nullptr;
}

static int CountItems()
{
    int count = 0;
    for (int i = 0; i < CountTreeChildren(Tree(), TVI_ROOT); i++)
        count += CountTreeChildren(Tree(), TreeChildAt(Tree(), TVI_ROOT, i));
    return count;
}

static std::vector<uint32_t> PanePixels()
{
    return WindowOf(Pane())->pixels.memory;
}

// Whether no picture is left in the temporary folder.
static bool IsTempFolderEmpty()
{
    char path[MAX_PATH];
    if (GetTempPathA(sizeof path, path) == 0)
        return false;
    for (const auto &entry : fs::directory_iterator(path))
        if (entry.path().extension() == ".png")
            return false;
    return true;
}

// What a step does: `act` with each call failing, then `check`, and the same again with none. What
// is allocated and made afterwards is what was before.
struct Deed {
    std::function<void()> prepare, act, check;
};

static int CheckDeed(const char *name, Failing kind, const Deed &deed)
{
    const bool isReal = runDisplay != nullptr;
    SCOPED_TRACE(name);
    const auto run = [&] {
        deed.prepare();
        deed.act();
        deed.check();
    };
    run();
    run();
    deed.prepare();
    long allocations = 0;
    Handles handles = {};
    const qsizetype widgets = QApplication::allWidgets().size();
    const auto act = [&] {
        allocations = CountLiveAllocations();
        handles = liveHandles;
        deed.act();
    };
    const auto check = [&] {
        deed.check();
        if (FailedCall() != nullptr)
            run();
        deed.prepare();
    };
    if (!isReal)
        FailEachOnce(kind, act, check); // what is kept from the first time on is there now
    const int count = FailEachOnce(kind, act, [&] {
        check();
        const long left = CountLiveAllocations() - allocations;
        EXPECT_TRUE(left == 0 || isReal) << left << " more allocations, " << FailedCall();
        EXPECT_EQ(QApplication::allWidgets().size(), widgets) << FailedCall();
        EXPECT_EQ(liveHandles, handles) << FailedCall();
    });
    printf("%s, %s: %d failure points\n", name, kind == Failing::Files ? "files" : "allocations",
           count);
    return count;
}

TEST_P(WindowFaults, StartSurvives)
{
    bool isStarted = false;
    CheckDeed("start", allocations,
              {[] {}, [&] { isStarted = Start(); },
               [&] {
                   EXPECT_TRUE(isStarted || FailedCall() != nullptr);
                   Stop();
               }});
}

TEST_P(WindowFaults, OpenSurvives)
{
    ASSERT_TRUE(Start());
    const Deed open = {[] { Command(IDM_CLOSE); }, [] { Command(IDM_OPEN); },
                       [] {
                           // All of it, or nothing.
                           EXPECT_EQ(openCatalog.count,
                                     FailedCall() != nullptr && CountItems() == 0 ? 0 : 9);
                           EXPECT_EQ(CountItems(), openCatalog.count);
                       }};
    CheckDeed("open", allocations, open);
    CheckDeed("open", Failing::Files, open);
    const std::vector<std::string> paths = {file};
    const Deed drop = {open.prepare,
                       [&] {
                           ReportDrop(globals.mainWindow, {5, 5}, paths);
                           RunUntilIdle();
                       },
                       open.check};
    CheckDeed("drop", allocations, drop);
    Stop();
}

TEST_P(WindowFaults, DrawingSurvives)
{
    ASSERT_TRUE(Start());
    Command(IDM_OPEN);
    for (char number = '1'; number <= '9'; number++) {
        HTREEITEM item = ItemOf(number);
        std::vector<uint32_t> drawn;
        const Deed draw = {[] {
                               InvalidateRect(Pane(), nullptr, TRUE);
                               RunUntilIdle();
                           },
                           [&] {
                               ReportTreeSelection(Tree(), item);
                               RunUntilIdle();
                           },
                           [&] {
                               if (FailedCall() == nullptr) {
                                   EXPECT_TRUE(drawn.empty() || PanePixels() == drawn);
                                   drawn = PanePixels();
                               }
                               EXPECT_TRUE(IsTempFolderEmpty());
                           }};
        CheckDeed("draw", allocations, draw);
        CheckDeed("draw", Failing::Files, draw);
    }
    Stop();
}

TEST_P(WindowFaults, SavingSurvives)
{
    ASSERT_TRUE(Start());
    Command(IDM_OPEN);
    const std::string saved = folder.Path("saved");
    strcpy(chosenPath, saved.c_str());
    for (char number = '1'; number <= '9'; number++) {
        ReportTreeSelection(Tree(), ItemOf(number));
        Bytes whole;
        Failing kind = allocations;
        const Deed save = {[&] {
                               fs::remove(saved);
                               dialogsShown = 0;
                           },
                           [] { Command(IDM_SAVE_AS); },
                           [&] {
                               const Bytes bytes = fs::exists(saved) ? ReadFile(saved) : Bytes();
                               if (FailedCall() == nullptr && whole.empty())
                                   whole = bytes;
                               EXPECT_TRUE(bytes == whole || FailedCall() != nullptr);
                               EXPECT_TRUE(bytes == whole || !fs::exists(saved));
                               // A chooser that cannot be shown is one that was left.
                               EXPECT_TRUE(bytes == whole || kind == allocations ||
                                           dialogsShown == 1);
                           }};
        CheckDeed("save", kind, save);
        kind = Failing::Files;
        if (number != '6') // texts that a disk has no room for count as written
            CheckDeed("save", kind, save);
    }
    Stop();
}

TEST_P(WindowFaults, DialogsSurvive)
{
    ASSERT_TRUE(Start());
    Command(IDM_OPEN);
    const auto nothing = [] {};
    ReportTreeSelection(Tree(), ItemOf('1'));
    strcpy(chosenPath, "/proc/none");
    CheckDeed("message", allocations, {nothing, [] { Command(IDM_SAVE_AS); }, nothing});
    CheckDeed("about", allocations, {nothing, [] { Command(IDM_ABOUT); }, nothing});
    if (isReal) {
        visible.chooseFile = realChooser;
        CheckDeed("chooser", allocations, {nothing, [] { Command(IDM_OPEN); }, nothing});
        visible.chooseFile = AnswerChooser;
    }
    setenv("PATH", "/nowhere", 1);
    CheckDeed("manual", allocations, {nothing, [] { Command(IDM_HELP); }, nothing});
    CheckDeed("menu", allocations,
              {nothing,
               [] {
                   ReportMouse(Pane(), WM_RBUTTONDOWN, 5, 5);
                   RunUntilIdle();
               },
               nothing});
    CheckDeed("splitter", allocations,
              {nothing,
               [] {
                   for (const UINT message : {WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP}) {
                       ReportMouse(globals.mainWindow, message, splitPosition + 2, 20);
                       RunUntilIdle();
                   }
                   splitPosition = 180;
               },
               nothing});
    Stop();
}

TEST_P(WindowFaults, PlayingSurvives)
{
    ASSERT_TRUE(Start());
    Command(IDM_OPEN);
    for (const char number : {'7', '8'}) {
        ReportTreeSelection(Tree(), ItemOf(number));
        CheckDeed("play", allocations,
                  {[] {}, [] { Command(IDM_PLAY); },
                   [] { SendMessageA(globals.mainWindow, WM_QUERYENDSESSION, 0, 0); }});
    }
    Stop();
}

INSTANTIATE_TEST_SUITE_P(Displays, WindowFaults, testing::Bool(), [](const auto &display) {
    return std::string(display.param ? "Real" : "Own");
});
