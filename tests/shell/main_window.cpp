// The main window, driven through its messages.
#include "shell/main_window.h"

#include "exe/catalog.h"
#include "program/globals.h"
#include "program/ids.h"
#include "program/routines.h"
#include "samples/builder/builder.h"
#include "tests/support/drive.h"
#include "tests/support/loops.h"

#include <array>

struct MainWindow : ProgramTest {
    void Open(const std::string &path)
    {
        SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0, (LPARAM)path.c_str());
        RunUntilIdle();
    }

    typedef std::array<LONG, 4> Edges; // left, top, right, bottom

    // A child's edges in the main window's client area.
    Edges EdgesOf(HWND child)
    {
        RECT rect;
        POINT origin = {0, 0};
        GetWindowRect(child, &rect);
        ClientToScreen(globals.mainWindow, &origin);
        return {rect.left - origin.x, rect.top - origin.y, rect.right - origin.x,
                rect.bottom - origin.y};
    }

    void ExpectLayout(LONG split)
    {
        const LONG width = GetClientWidth(globals.mainWindow);
        const LONG height = GetClientHeight(globals.mainWindow);
        EXPECT_EQ(splitPosition, split);
        EXPECT_EQ(EdgesOf(Tree()), (Edges{0, 0, split - 2, height}));
        EXPECT_EQ(EdgesOf(Pane()), (Edges{split + 2, 0, width, height}));
    }

    void Mouse(UINT message, int x, int y = 50)
    {
        SendMessageA(globals.mainWindow, message, 0, MAKELPARAM(x, y));
    }
};

typedef std::vector<std::string> Texts;

static const char noFileTitle[] = "Quillmoor [ NO FILE ] ";

TEST_F(MainWindow, StartsWithoutAFile)
{
    EXPECT_EQ(TitleText(), noFileTitle);
    ExpectLayout(180);
    for (UINT command : {IDM_CLOSE, IDM_SAVE_AS, IDM_PLAY})
        EXPECT_TRUE(IsGray(command)) << command;
    for (UINT command : {IDM_OPEN, IDM_EXIT, IDM_HELP, IDM_ABOUT})
        EXPECT_FALSE(IsGray(command)) << command;
    RECT outer;
    GetWindowRect(globals.mainWindow, &outer);
    EXPECT_EQ(outer.right - outer.left, 620);
    EXPECT_EQ(outer.bottom - outer.top, 440);
    EXPECT_EQ(outer.left, (GetSystemMetrics(SM_CXSCREEN) - 620) / 2);
    EXPECT_EQ(outer.top, (GetSystemMetrics(SM_CYSCREEN) - 440) / 2);
    EXPECT_EQ(PixelsOf(Pane()).At(5, 5), 0xFFFFFFu);
}

TEST_F(MainWindow, OpensAFileAndShowsItsResources)
{
    const std::string path = TestFile("every.dll", EveryKind());
    Open(path);
    EXPECT_EQ(TitleText(), "Quillmoor [ " + path + " ] ");
    const Texts labels = {
        "BINARY DATA", "  500 (444 bytes)", "  501 (5 bytes)", "BITMAP",       "  101 (640 bytes)",
        "ICON",        "  1 (744 bytes)",   "  2 (",           "STRING TABLE", "  7 ("};
    const Texts shown = TreeLabels();
    ASSERT_EQ(shown.size(), labels.size());
    for (size_t i = 0; i < labels.size(); i++)
        EXPECT_EQ(shown[i].compare(0, labels[i].size(), labels[i]), 0) << shown[i];
    EXPECT_FALSE(IsGray(IDM_CLOSE));
    EXPECT_TRUE(IsGray(IDM_SAVE_AS));
}

TEST_F(MainWindow, MenuStatesFollowTheSelection)
{
    const struct {
        const char *category, *item;
        bool canSave, canPlay;
    } cases[] = {
        {"BINARY DATA", "500", true, true}, {"BINARY DATA", "501", true, false},
        {"BINARY DATA", "500", true, true}, {"BINARY DATA", "", false, false},
        {"BITMAP", "101", true, false},     {"STRING TABLE", "7", true, false},
    };
    Open(TestFile("every.dll", EveryKind()));
    for (const auto &c : cases) {
        SCOPED_TRACE(std::string(c.category) + " " + c.item);
        Select(c.category, c.item);
        EXPECT_EQ(!IsGray(IDM_SAVE_AS), c.canSave);
        EXPECT_EQ(!IsGray(IDM_PLAY), c.canPlay);
        EXPECT_FALSE(IsGray(IDM_CLOSE));
    }
    // A new item that the tree cannot report changes nothing.
    NMTREEVIEWA notification = {};
    notification.hdr.idFrom = IDC_TREE;
    notification.hdr.code = (UINT)TVN_SELCHANGEDA;
    SendMessageA(globals.mainWindow, WM_NOTIFY, IDC_TREE, (LPARAM)&notification);
    EXPECT_FALSE(IsGray(IDM_SAVE_AS));
}

TEST_F(MainWindow, SelectionRepaintsThePane)
{
    Open(TestFile("every.dll", EveryKind()));
    const LONG x = GetClientWidth(Pane()) / 2;
    const LONG y = GetClientHeight(globals.mainWindow) / 2;
    Select("BITMAP", "101");
    EXPECT_EQ(PixelsOf(Pane()).At(x, y), 0xFF0000u);
    Select("ICON", "1");
    EXPECT_EQ(PixelsOf(Pane()).At(x, y - 10), 0x0000FFu);
    Select("ICON", "");
    EXPECT_EQ(PixelsOf(Pane()).At(x, y - 10), 0xFFFFFFu);
}

TEST_F(MainWindow, CloseEmptiesAndLeavesTheMenuAsItWas)
{
    Open(TestFile("every.dll", EveryKind()));
    Select("BINARY DATA", "500");
    for (int i = 0; i < 2; i++) {
        Command(IDM_CLOSE);
        EXPECT_EQ(TitleText(), noFileTitle);
        EXPECT_EQ(TreeLabels(), Texts());
        EXPECT_EQ(openCatalog.count, 0);
    }
    for (UINT command : {IDM_CLOSE, IDM_SAVE_AS, IDM_PLAY})
        EXPECT_FALSE(IsGray(command)) << command;
    // Nothing is left to save or to play.
    Command(IDM_SAVE_AS);
    Command(IDM_PLAY);
    EXPECT_EQ(TakeShown(), Texts());
}

TEST_F(MainWindow, ARefusedFileSaysWhyAndLeavesNoFile)
{
    const char notStandard[] = "The file you have attempted to open is not a standard Windows "
                               "executable or library.";
    const char corrupt[] = "The file you have attempted to open appears to be corrupt or there was "
                           "an error allocating memory.";
    const char nothing[] = "There are no interesting resources in the file you attempted to open.";
    const struct {
        const char *name;
        Bytes bytes;
        Texts shown;
    } cases[] = {
        {"empty", {}, {}},
        {"text", {'H', 'e', 'l', 'l', 'o'}, {}},
        {"two bytes", {'M', 'Z'}, {notStandard}},
        {"none kept", BuildPe({.resources = {{16, 1, {1}}}}).bytes, {nothing}},
        {"other section",
         BuildPe({.resources = {{16, 1, {1}}}, .sectionName = ".data"}).bytes,
         {corrupt, nothing}},
    };
    const std::string good = TestFile("every.dll", EveryKind());
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Open(good);
        TakeShown();
        Command(IDM_CLOSE);
        for (size_t i = 0; i < c.shown.size(); i++)
            PressNext(IDOK);
        Open(TestFile(c.name, c.bytes));
        EXPECT_EQ(TakeShown(), c.shown);
        EXPECT_EQ(TitleText(), noFileTitle);
        EXPECT_EQ(TreeLabels(), Texts());
        EXPECT_EQ(openCatalog.count, 0);
    }
    Open("");
    SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0, 0);
    Open("\"" + good + "\"");
    EXPECT_EQ(TakeShown(), Texts());
    EXPECT_EQ(TitleText(), noFileTitle);
}

TEST_F(MainWindow, OpenAsksForAFileAndACancelKeepsTheOldOne)
{
    const std::string path = TestFile("every.dll", EveryKind());
    ChooseNext(path);
    Command(IDM_OPEN);
    EXPECT_EQ(TitleText(), "Quillmoor [ " + path + " ] ");
    CancelNext();
    Command(IDM_OPEN);
    EXPECT_EQ(TitleText(), "Quillmoor [ " + path + " ] ");
    EXPECT_EQ(openCatalog.count, 6);
    EXPECT_EQ(TakeShown(), Texts({"chooser: ", "chooser: "}));
}

TEST_F(MainWindow, ATitleThatIsTooLongShowsTheNamesEnd)
{
    SetMainTitle(std::string(248, 'n').c_str());
    EXPECT_EQ(TitleText(), "Quillmoor [ " + std::string(248, 'n') + " ] ");
    SetMainTitle((std::string(400, 'n') + "end").c_str());
    EXPECT_EQ(TitleText(), "Quillmoor [ ..." + std::string(242, 'n') + "end ] ");
}

TEST_F(MainWindow, SizeIsAcceptedOrPutBack)
{
    const struct {
        int width, height, becomesWidth, becomesHeight;
    } cases[] = {
        {700, 500, 700, 500},
        {600, 500, 620, 440},
        {700, 439, 620, 440},
        {620, 440, 620, 440},
    };
    for (const auto &c : cases) {
        MoveWindow(globals.mainWindow, 30, 20, c.width, c.height, TRUE);
        RunUntilIdle();
        RECT outer;
        GetWindowRect(globals.mainWindow, &outer);
        EXPECT_EQ(outer.right - outer.left, c.becomesWidth);
        EXPECT_EQ(outer.bottom - outer.top, c.becomesHeight);
        ExpectLayout(180);
    }
}

TEST_F(MainWindow, TheSplitterStaysBetween100AndTheMiddle)
{
    const LONG middle = GetClientWidth(globals.mainWindow) / 2;
    const struct {
        int x;
        LONG split;
    } cases[] = {{200, 200}, {40, 100}, {5000, middle}, {-30, 100}, {100, 100}, {250, 250}};
    for (const auto &c : cases) {
        Mouse(WM_LBUTTONDOWN, splitPosition);
        Mouse(WM_MOUSEMOVE, 222);
        Mouse(WM_MOUSEMOVE, c.x);
        Mouse(WM_LBUTTONUP, c.x);
        RunUntilIdle();
        ExpectLayout(c.split);
    }
    // Without the capture a movement drags nothing.
    Mouse(WM_MOUSEMOVE, 150);
    EXPECT_EQ(splitPosition, 250);
    // The second press of a double click is none; the release still lays out.
    splitPosition = 160;
    Mouse(WM_LBUTTONDBLCLK, 160);
    Mouse(WM_LBUTTONUP, 160);
    RunUntilIdle();
    ExpectLayout(160);
}

TEST_F(MainWindow, TheDragBarIsACheckerboardOverBothChildrenUntilTheRelease)
{
    Open(TestFile("every.dll", EveryKind()));
    UpdateWindow(globals.mainWindow);
    const Pixels before = PixelsOf(globals.mainWindow);
    // In the row given: how many of the five columns around x differ from the picture before.
    auto changed = [&](const Pixels &now, int x, int y) {
        int count = 0;
        for (int i = x - 2; i <= x + 2; i++)
            count += now.At(i, y) != before.At(i, y);
        return count;
    };
    Mouse(WM_LBUTTONDOWN, 180);
    for (int x : {240, 140}) {
        Mouse(WM_MOUSEMOVE, x);
        const Pixels now = PixelsOf(globals.mainWindow);
        // A null pen leaves the last column and row out: four columns, every second pixel.
        for (int y : {10, 11, 300})
            EXPECT_EQ(changed(now, x, y), 2) << x << " " << y;
        EXPECT_NE(now.At(x, 300) != before.At(x, 300), now.At(x, 301) != before.At(x, 301));
        EXPECT_EQ(changed(now, 2, 300) + changed(now, 2, 301), 0);
        EXPECT_EQ(changed(now, 180, 300), 0);
        EXPECT_EQ(changed(now, x == 240 ? 140 : 240, 300), 0);
    }
    Mouse(WM_MOUSEMOVE, 180);
    Mouse(WM_LBUTTONUP, 180);
    RunUntilIdle();
    EXPECT_EQ(PixelsOf(globals.mainWindow).values, before.values);
}

TEST_F(MainWindow, TheContextMenuOffersWhatTheFileMenuDoes)
{
    Open(TestFile("every.dll", EveryKind()));
    const struct {
        const char *item;
        HWND over;
        const char *menu;
    } cases[] = {
        {"", Tree(), "menu: [Save &as...]"},          {"", Pane(), "menu: [Save &as...] [&Play]"},
        {"500", Tree(), "menu: Save &as..."},         {"500", Pane(), "menu: Save &as... &Play"},
        {"501", Pane(), "menu: Save &as... [&Play]"},
    };
    for (const auto &c : cases) {
        Select("BINARY DATA", c.item);
        MoveMouse(c.over, 60, 200);
        PickNext(0);
        SendMessageA(globals.mainWindow, WM_PARENTNOTIFY, WM_RBUTTONDOWN, 0);
        RunUntilIdle();
        EXPECT_EQ(TakeShown(), Texts({c.menu}));
    }
    PickNext(IDM_SAVE_AS);
    CancelNext();
    SendMessageA(globals.mainWindow, WM_PARENTNOTIFY, WM_RBUTTONDOWN, 0);
    RunUntilIdle();
    EXPECT_EQ(TakeShown(), Texts({"menu: Save &as... [&Play]", "chooser: 501.BIN"}));
}

TEST_F(MainWindow, AnswersTheRequestsOfItsControls)
{
    HDC dc = GetDC(Pane());
    for (UINT message : {WM_CTLCOLORMSGBOX, WM_CTLCOLORBTN, WM_CTLCOLORDLG, WM_CTLCOLORSTATIC}) {
        SetBkColor(dc, 0x123456);
        SetTextColor(dc, 0x123456);
        EXPECT_EQ(SendMessageA(globals.mainWindow, message, (WPARAM)dc, (LPARAM)Pane()),
                  (LRESULT)globals.backgroundBrush);
        EXPECT_EQ(SetBkColor(dc, 0), GetSysColor(COLOR_BTNFACE));
        EXPECT_EQ(SetTextColor(dc, 0), GetSysColor(COLOR_WINDOWTEXT));
    }
    ReleaseDC(Pane(), dc);
    EXPECT_EQ(SendMessageA(globals.mainWindow, WM_QUERYENDSESSION, 0, 0), 1);
    DRAWITEMSTRUCT item = {};
    item.CtlID = IDC_PANE;
    EXPECT_EQ(SendMessageA(globals.mainWindow, WM_DRAWITEM, IDC_PANE, (LPARAM)&item), 1);
    Command(IDC_PANE);
    EXPECT_EQ(TakeShown(), Texts());
}

TEST_F(MainWindow, ASoundsBlockStaysLockedUntilTheUserActs)
{
    Open(TestFile("every.dll", EveryKind()));
    Select("BINARY DATA", "500");
    ResourceEntry entry;
    ASSERT_EQ(GetEntry(openCatalog.entries, &entry, 4), 1);
    ASSERT_EQ(entry.isWave, 1);
    NMHDR focus = {Tree(), IDC_TREE, (UINT)NM_SETFOCUS};
    const struct {
        const char *what;
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    } cases[] = {
        {"Open", WM_COMMAND, IDM_OPEN, 0},
        {"Save as", WM_COMMAND, IDM_SAVE_AS, 0},
        {"About", WM_COMMAND, IDM_ABOUT, 0},
        {"a notification", WM_NOTIFY, IDC_TREE, (LPARAM)&focus},
        {"the session's end", WM_QUERYENDSESSION, 0, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        Command(IDM_PLAY);
        Command(IDM_PLAY);
        EXPECT_EQ(LockCount(entry.data), 1);
        if (c.wParam == IDM_ABOUT)
            PressNext(IDOK);
        else if (c.message == WM_COMMAND)
            CancelNext();
        SendMessageA(globals.mainWindow, c.message, c.wParam, c.lParam);
        EXPECT_EQ(LockCount(entry.data), 0);
        EXPECT_TRUE(sndPlaySoundA(nullptr, SND_NOSTOP)); // again, with nothing to stop
    }
}

TEST_F(MainWindow, ASoundThatLiesAboutItsSizePlaysFromACopy)
{
    Bytes wave = ShortSound();
    PutU32(wave, 4, (uint32_t)wave.size());
    Open(TestFile(
        "liar.dll",
        BuildPe({.resources = {{10, 1, wave}, {10, 2, Text("RIFF")}, {10, 3, {}}}}).bytes));
    for (const char *item : {"1", "2", "3"}) {
        Select("BINARY DATA", item);
        ResourceEntry entry;
        ASSERT_EQ(GetEntry(openCatalog.entries, &entry, item[0] - '1'), 1);
        Command(IDM_PLAY);
        EXPECT_EQ(LockCount(entry.data), 0);
    }
}

TEST_F(MainWindow, ExitAndTheCloseBoxEndTheProgram)
{
    EXPECT_EQ(Command(IDM_EXIT), 0);
    EXPECT_FALSE(IsAlive(globals.mainWindow));
    StopProgram();
    StartProgram();
    SendMessageA(globals.mainWindow, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(RunUntilIdle(), 0);
    EXPECT_FALSE(IsAlive(globals.mainWindow));
}
