// The whole program, as its users meet it: what each step does is told, and compared with the text
// of the same name in the folder stories.
#include "program/globals.h"
#include "program/ids.h"
#include "samples/builder/builder.h"
#include "shell/main_window.h"
#include "tests/support/drive_story.h"
#include "tests/support/loops.h"

#include <filesystem>

static void Open(const std::string &path)
{
    ChooseNext(path);
    Command(IDM_OPEN);
}

// A picture of few pixels that shows which way is up and left.
static Picture Corner()
{
    Picture picture = MakePicture(9, 5, 0xFF00FF00);
    for (int i = 0; i < 9; i++)
        picture.At(i, 0) = 0xFFFF0000;
    for (int i = 0; i < 5; i++)
        picture.At(0, i) = 0xFF0000FF;
    return picture;
}

static void GiveClientSize()
{
    RECT outer, client;
    GetWindowRect(globals.mainWindow, &outer);
    GetClientRect(globals.mainWindow, &client);
    MoveWindow(globals.mainWindow, 30, 20, outer.right - outer.left - client.right + STORY_WIDTH,
               outer.bottom - outer.top - client.bottom + STORY_HEIGHT, TRUE);
    RunUntilIdle();
}

static void WriteSettings(const std::string &text)
{
    std::filesystem::create_directories(outside.userFolder + "/Orrindale");
    WriteBytes((outside.userFolder + "/Orrindale/VLXPRO30.INI").c_str(), Text(text.c_str()));
}

TEST(Stories, Start)
{
    BeginStory();
    Step("start in the host module's folder", [] { StartProgram(); });
    const std::string hostFolder = std::filesystem::current_path().string();
    Step("exit", [] { Command(IDM_EXIT); });
    StopProgram();
    Step("start where no host module is, with settings that name its folder", [&] {
        WriteSettings("[Vellumax]\r\nApplicationPath=" + hostFolder + "\r\n");
        StartProgram("", TestFolder());
    });
    Step("close box", [] {
        SendMessageA(globals.mainWindow, WM_SYSCOMMAND, SC_CLOSE, 0);
        RunUntilIdle();
    });
    StopProgram();
    Step("start with settings that name a folder without it", [&] {
        WriteSettings("[Vellumax]\r\nApplicationPath=" + TestFolder() + "\r\n");
        PressNext(IDOK);
        StartProgram();
    });
    EndStory("start");
}

TEST(Stories, Looking)
{
    BeginStory();
    const std::string path = TestFile(
        "looks.dll",
        BuildPe(
            {.resources = {{2, 24, MakeDib(Corner(), 24)},
                           {2, 8, MakeDib(Corner(), 8)},
                           {2, 9, {}},
                           {3, 1, MakeIconImage(Corner(), 4)},
                           {3, 2, MakePng(Corner())},
                           {3, 3, {1, 2, 3}},
                           {6, 7, MakeStringBlock({u"", u"One", u"Two\tlines\r\n\x01 & \xE4"})},
                           {10, 500, ShortSound()},
                           {10,
                            u"NAMED",
                            {1, 2, 3, 'A', 'z', '[', 0xFF, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}},
                           {u"OWN", 1, {}}}})
            .bytes);
    Step("start", [] {
        StartProgram();
        GiveClientSize();
    });
    Step("open", [&] { Open(path); });
    static const struct {
        const char *category, *item;
    } items[] = {{"BITMAP", "24"},        {"BITMAP", "8"},      {"BITMAP", "9"},
                 {"ICON", "1"},           {"ICON", "2"},        {"ICON", "3"},
                 {"STRING TABLE", "7"},   {"STRING TABLE", ""}, {"BINARY DATA", "500"},
                 {"BINARY DATA", "NAMED"}};
    for (const auto &item : items)
        Step(std::string("look at ") + item.category + " " + item.item,
             [&] { Select(item.category, item.item); });
    outside.hasNoTemporaryFolder = true;
    Step("look at a PNG icon with no folder for its file", [&] { Select("ICON", "2"); });
    EndStory("looking");
}

static void SaveAs(const std::string &path)
{
    ChooseNext(path);
    Command(IDM_SAVE_AS);
}

// A file that is refused with that many messages, after a good one.
static void OpenRefused(const std::string &good, const std::string &path, int messages)
{
    Step("open a good one again", [&] {
        Open(good);
        Select("BITMAP", "101");
    });
    Step("open one that is refused", [&] {
        ChooseNext(path);
        for (int i = 0; i < messages; i++)
            PressNext(IDOK);
        Command(IDM_OPEN);
    });
}

static void OpenWithLittleMemory(const std::string &good)
{
    for (int blocks = 0; blocks < 4; blocks++)
        Step("open with memory for " + std::to_string(blocks) + " blocks", [&] {
            outside.blocksLeft = blocks;
            ChooseNext(good);
            PressNext(IDOK);
            if (blocks < 3)
                PressNext(IDOK);
            Command(IDM_OPEN);
            outside.blocksLeft = -1;
        });
}

TEST(Stories, OpeningAndFailing)
{
    BeginStory();
    const std::string good = TestFile("good.dll", EveryKind());
    const std::string second =
        TestFile("second.dll", BuildNe({.resources = {{2, 5, MakeDib(Corner(), 4)}}}).bytes);
    const std::string text = TestFile("text", Text("Hello, this is no executable at all."));
    const std::string stub = TestFile("stub", Text("MZ"));
    const std::string dull = TestFile("dull.dll", BuildPe({.resources = {{16, 1, {1}}}}).bytes);
    const std::string other =
        TestFile("other.dll", BuildPe({.resources = {{16, 1, {1}}}, .sectionName = ".data"}).bytes);
    Step("start with a file", [&] {
        StartProgram(good);
        GiveClientSize();
    });
    Step("open no name, and an empty one", [] {
        SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0, 0);
        SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0, (LPARAM) "");
    });
    Step("look at a sound", [] { Select("BINARY DATA", "500"); });
    Step("be told of a selection that is none", [] {
        NMTREEVIEWA notification = {};
        notification.hdr.idFrom = IDC_TREE;
        notification.hdr.code = (UINT)TVN_SELCHANGEDA;
        SendMessageA(globals.mainWindow, WM_NOTIFY, IDC_TREE, (LPARAM)&notification);
    });
    Step("ask for another file, and cancel", [] {
        CancelNext();
        Command(IDM_OPEN);
    });
    Step("open another over it", [&] {
        outside.filter = 2;
        Open(second);
    });
    Step("look", [] { Select("BITMAP", "5"); });
    const struct {
        std::string path;
        int messages;
    } refused[] = {{text, 0}, {stub, 1}, {dull, 1}, {other, 2}};
    for (const auto &c : refused)
        OpenRefused(good, c.path, c.messages);
    Step("open one that is there no more", [&] {
        Open(good);
        Select("BITMAP", "101");
        const std::string gone = TestFolder() + "gone";
        SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0, (LPARAM)gone.c_str());
    });
    Step("save and play nothing", [] {
        Command(IDM_SAVE_AS);
        Command(IDM_PLAY);
    });
    OpenWithLittleMemory(good);
    EndStory("opening");
}

TEST(Stories, Saving)
{
    BeginStory();
    const std::string path = TestFile("every.dll", EveryKind());
    static const struct {
        const char *category, *item;
    } items[] = {{"BITMAP", "101"},     {"ICON", "1"},          {"ICON", "2"},
                 {"STRING TABLE", "7"}, {"BINARY DATA", "500"}, {"BINARY DATA", "501"}};
    Step("start", [&] {
        StartProgram(path);
        SetCursor(LoadCursorA(nullptr, IDC_ARROW));
        GiveClientSize();
    });
    for (const auto &item : items) {
        Step(std::string("look at ") + item.category + " " + item.item,
             [&] { Select(item.category, item.item); });
        Step("save", [&] { SaveAs(TestFolder() + "saved " + item.item); });
    }
    Step("cancel", [] {
        CancelNext();
        Command(IDM_SAVE_AS);
    });
    Step("save where no file can be made", [] {
        ChooseUncreatable();
        PressNext(IDOK);
        Command(IDM_SAVE_AS);
    });
    Step("save over another, after a no", [] {
        ChooseNext(TestFolder() + "saved 1");
        PressNext(IDNO);
        ChooseNext(TestFolder() + "saved 1");
        PressNext(IDYES);
        Command(IDM_SAVE_AS);
    });
    EndStory("saving");
}

TEST(Stories, Playing)
{
    BeginStory();
    Bytes liar = ShortSound();
    PutU32(liar, 4, (uint32_t)liar.size());
    const std::string path = TestFile(
        "sounds.dll",
        BuildPe({.resources = {{10, 1, ShortSound()}, {10, 2, liar}, {10, 3, {1, 2}}}}).bytes);
    Step("start", [&] { StartProgram(path); });
    const auto play = [](const char *item) {
        Step(std::string("play ") + item, [&] {
            Select("BINARY DATA", item);
            Command(IDM_PLAY);
        });
    };
    play("2");
    play("1");
    Step("play again", [] { Command(IDM_PLAY); });
    Step("look at something else", [] { Select("BINARY DATA", "3"); });
    play("1");
    Step("the tree gets the keyboard", [] {
        NMHDR focus = {Tree(), IDC_TREE, (UINT)NM_SETFOCUS};
        SendMessageA(globals.mainWindow, WM_NOTIFY, IDC_TREE, (LPARAM)&focus);
    });
    play("1");
    Step("open, cancelled", [] {
        CancelNext();
        Command(IDM_OPEN);
    });
    play("1");
    Step("save, cancelled", [] {
        CancelNext();
        Command(IDM_SAVE_AS);
    });
    play("1");
    Step("about", [] {
        PressNext(IDOK);
        Command(IDM_ABOUT);
    });
    play("1");
    Step("help goes on", [] {
        outside.browser = "firefox.exe";
        Command(IDM_HELP);
    });
    Step("the session ends", [] { SendMessageA(globals.mainWindow, WM_QUERYENDSESSION, 0, 0); });
    play("2");
    Step("close", [] { Command(IDM_CLOSE); });
    Step("open again", [&] { Open(path); });
    play("1");
    Step("exit", [] { Command(IDM_EXIT); });
    StopProgram();
    Step("start again", [&] { StartProgram(path); });
    play("1");
    Step("the window is destroyed", [] {
        DestroyWindow(globals.mainWindow);
        RunUntilIdle();
    });
    EndStory("playing");
}

TEST(Stories, HelpAndAbout)
{
    static const char *const browsers[] = {"firefox.exe", "opera.exe",
                                           "c:\\Program Files\\Opera\\opera.exe", "netscape.exe",
                                           "iexplore.exe"};
    BeginStory();
    Step("start", [] { StartProgram(); });
    for (const char *browser : browsers)
        Step(std::string("help, with ") + browser, [&] {
            outside.browser = browser;
            Command(IDM_HELP);
        });
    outside.browser.clear();
    Step("help, with the system's application", [] {
        outside.application = "viewer program";
        Command(IDM_HELP);
    });
    Step("help, when it does not start", [] {
        outside.cannotStart = true;
        PressNext(IDOK);
        Command(IDM_HELP);
    });
    Step("help, with nothing", [] {
        outside.application.clear();
        PressNext(IDOK);
        Command(IDM_HELP);
    });
    Step("about", [] {
        PressNext(IDCANCEL);
        PressNext(IDC_ABOUT_PICTURE);
        PressNext(IDOK);
        Command(IDM_ABOUT);
    });
    Step("exit", [] { Command(IDM_EXIT); });
    StopProgram();
    Bytes cut = MakeDib(MakePicture(40, 40, 0xFF00FF00), 24);
    cut.resize(3000);
    const ExecutableDescription host = {.resources = {{2, 9004, cut, 0}}, .is64 = true};
    Step("about, with a host whose picture is cut", [&] {
        WriteSettings("[Vellumax]\r\nApplicationPath=" + TestFolder() + "\r\n");
        TestFile("VLXPRO.EXE", BuildPe(host).bytes);
        StartProgram();
        PressNext(IDOK);
        Command(IDM_ABOUT);
    });
    EndStory("help and about");
}

TEST(Stories, MouseAndSize)
{
    BeginStory();
    const std::string path = TestFile("every.dll", EveryKind());
    const auto mouse = [](UINT message, int x) {
        SendMessageA(globals.mainWindow, message, 0, MAKELPARAM(x, 50));
        RunUntilIdle();
    };
    Step("start", [&] {
        StartProgram(path);
        GiveClientSize();
    });
    for (const char *item : {"", "500", "501"}) {
        Step(std::string("select BINARY DATA ") + item, [&] { Select("BINARY DATA", item); });
        for (const bool isPane : {false, true})
            Step(isPane ? "right press over the pane" : "right press over the tree", [&] {
                MoveMouse(isPane ? Pane() : Tree(), 60, 200);
                PickNext(0);
                SendMessageA(globals.mainWindow, WM_PARENTNOTIFY, WM_RBUTTONDOWN, 0);
                RunUntilIdle();
            });
    }
    Step("pick save there", [] {
        PickNext(IDM_SAVE_AS);
        CancelNext();
        SendMessageA(globals.mainWindow, WM_PARENTNOTIFY, WM_RBUTTONDOWN, 0);
        RunUntilIdle();
    });
    Step("another press", [] {
        SendMessageA(globals.mainWindow, WM_PARENTNOTIFY, WM_LBUTTONDOWN, 0);
        RunUntilIdle();
    });
    for (int x : {250, 40, 340, 360, -30}) {
        Step("drag the splitter to " + std::to_string(x), [&] {
            mouse(WM_LBUTTONDOWN, splitPosition);
            mouse(WM_MOUSEMOVE, x);
            mouse(WM_LBUTTONUP, x);
        });
    }
    Step("move without a press", [&] {
        mouse(WM_MOUSEMOVE, 200);
        mouse(WM_LBUTTONUP, 200); // lays out, so that a drag would be seen
    });
    Step("press twice in a row", [&] {
        splitPosition = 160;
        mouse(WM_LBUTTONDBLCLK, 160);
        mouse(WM_LBUTTONUP, 160);
    });
    const struct {
        int width, height;
    } sizes[] = {{700, 500}, {619, 500}, {700, 439}, {620, 440}};
    for (const auto &size : sizes)
        Step("size " + std::to_string(size.width) + " x " + std::to_string(size.height), [&] {
            MoveWindow(globals.mainWindow, 30, 20, size.width, size.height, TRUE);
            RunUntilIdle();
        });
    EndStory("mouse and size");
}
