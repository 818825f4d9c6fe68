// The whole program, as its users meet it: what each step does is told, and compared with the text
// of the same name in the folder stories.
#include "program/globals.h"
#include "program/ids.h"
#include "samples/builder/builder.h"
#include "shell/main_window.h"
#include "tests/support/dib_kinds.h"
#include "tests/support/drive_story.h"
#include "tests/support/loops.h"

#include <cstring>
#include <filesystem>
#include <map>

static void Open(const std::string &path)
{
    ChooseNext(path);
    Command(IDM_OPEN);
}

static void Drop(const std::string &paths)
{
    HGLOBAL drop = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + paths.size());
    DROPFILES *header = (DROPFILES *)GlobalLock(drop);
    header->pFiles = sizeof(DROPFILES);
    memcpy(header + 1, paths.data(), paths.size());
    GlobalUnlock(drop);
    PostMessageA(globals.mainWindow, WM_DROPFILES, (WPARAM)drop, 0);
    RunUntilIdle();
}

// A picture that shows which way is up and left.
static Picture Corner(int width = 9, int height = 5)
{
    Picture picture = MakePicture(width, height, 0xFF00FF00);
    for (int i = 0; i < width; i++)
        picture.At(i, 0) = 0xFFFF0000;
    for (int i = 0; i < height; i++)
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
    StopProgram();
    // The longest that has room for the file's name, and one more.
    for (const size_t length : {248, 249}) {
        Step("start with settings that name a folder of " + std::to_string(length) + " bytes", [&] {
            WriteSettings("[Vellumax]\r\nApplicationPath=" + std::string(length, 'x') + "\r\n");
            PressNext(IDOK);
            StartProgram();
        });
        StopProgram();
    }
    WriteSettings("[Vellumax]\r\nApplicationPath=" + TestFolder() + "\r\n");
    for (const auto &[what, flags, hasEntry] :
         {std::tuple("a program", 0x22u, true),
          {"a library without code", 0x2022u, false},
          {"a library whose code would run", 0x2022u, true}}) {
        BuiltExecutable host = BuildPe({.resources = {{2, 9004, {1}}}, .is64 = true});
        PutU16(host.bytes, host.header + 22, flags);
        PutU32(host.bytes, host.header + 40, hasEntry ? host.address : 0);
        if (flags == 0x2022 && hasEntry)
            PressNext(IDOK);
        Step(std::string("start with a host module that is ") + what, [&host] {
            TestFile("VLXPRO.EXE", host.bytes);
            StartProgram();
        });
        StopProgram();
    }
    EndStory("start");
}

// A resource, with its kind's label and what it shows.
struct Look {
    ResourceDescription resource;
    std::string category, what;
};
typedef std::vector<Look> Looks;

static void Add(Looks *looks, int type, const std::string &what, const Bytes &data)
{
    static const std::map<int, const char *> categories = {
        {2, "BITMAP"}, {3, "ICON"}, {6, "STRING TABLE"}, {10, "BINARY DATA"}};
    looks->push_back({{type, 100 + (int)looks->size(), data}, categories.at(type), what});
}

static void AddBitmaps(Looks *looks)
{
    for (const auto &kind : dibKinds) {
        Bytes dib = MakeDib(Corner(), kind.bits, kind.form);
        if (kind.form == DibForm::RunLength)
            dib.resize(dib.size() - 2);               // the end mark
        dib[kind.form == DibForm::Core ? 8 : 12] = 0; // planes, which are not read
        Add(looks, 2, "a bitmap of form " + std::to_string((int)kind.form), dib);
    }
    Add(looks, 2, "a bitmap larger than the pane", MakeDib(Corner(600, 510), 4));
}

static void AddIcons(Looks *looks)
{
    Picture picture = Corner();
    for (int i = 0; i < 5; i++)
        picture.At(i, i) = 0;
    for (int bits : {1, 4, 8, 16, 24, 32}) {
        Bytes icon = MakeIconImage(picture, bits);
        icon[12] = 0;            // planes
        icon[16] = BI_BITFIELDS; // compression; neither is read
        Add(looks, 3, "an icon", icon);
    }
    picture = MakePicture(4, 2, 0x800000FF);
    Add(looks, 3, "a half clear icon", MakeIconImage(picture, 32));
    picture.At(0, 0) = 0x00FF0000;
    picture.At(1, 0) = 0xFFFF0000;
    Add(looks, 3, "a half clear PNG", MakePng(picture));
    Bytes odd = MakeIconImage(Corner(), 24);
    PutU32(odd, 8, 11);
    Add(looks, 3, "an icon with a row too many", odd);
}

static void AddDamaged(Looks *looks)
{
    const Bytes bitmap = MakeDib(Corner(), 24), colored = MakeDib(Corner(), 8);
    const Bytes icon = MakeIconImage(Corner(), 8), deepIcon = MakeIconImage(Corner(), 32);
    const Bytes png = MakePng(Corner());
    const struct {
        const char *what;
        int type;
        const Bytes &data;
        size_t offset;
        uint32_t value;
        size_t size;
    } cases[] = {
        {"cut rows", 2, bitmap, 4, 9, bitmap.size() - 1},
        {"a cut header", 2, bitmap, 4, 9, 39},
        {"no bitmap", 2, bitmap, 4, 9, 0},
        {"colours past the end", 2, colored, 32, ~0u, colored.size()},
        {"a cut mask", 3, icon, 4, 9, icon.size() - 1},
        {"a cut PNG", 3, png, 16, 9 << 24, 40},
        {"no icon", 3, icon, 4, 9, 7},
        {"an endless width", 3, deepIcon, 4, 0x7FFFFFFF, deepIcon.size()},
        {"an endless height", 3, icon, 8, 0x7FFFFFFF, icon.size()},
        {"the least height", 3, icon, 8, 0x80000000, icon.size()},
        {"a height of -1", 3, icon, 8, 0xFFFFFFFF, icon.size()},
        {"an endless height", 2, icon, 8, 0x7FFFFFFF, icon.size()},
        {"the least height", 2, icon, 8, 0x80000000, icon.size()},
        {"a height of -1", 2, icon, 8, 0xFFFFFFFF, icon.size()},
    };
    for (const auto &c : cases) {
        Bytes data = c.data;
        PutU32(data, c.offset, c.value);
        data.resize(c.size);
        Add(looks, c.type, c.what, data);
    }
}

static void AddTexts(Looks *looks)
{
    Add(looks, 6, "strings",
        MakeStringBlock(
            {u"", u"One", u"Two\tlines\r\n\x01 & \xE4\u20AC", u"", std::u16string(9000, u'x')}));
    Bytes cut = MakeStringBlock({u"abc", u"defg"});
    cut.resize(2 + 6 + 2 + 6);
    Add(looks, 6, "a string that runs past its block", cut);
    Add(looks, 6, "no strings", {});
    Add(looks, 6, "many strings", MakeStringBlock(std::vector<std::u16string>(41, u"line")));
    Add(looks, 10, "a sound", ShortSound());
    Add(looks, 10, "data",
        {0x41, 0x31, 0x20, 0x7A, 0xFF, 0x00, 0x5A, 0x5B, 0x60, 0x61, 0x7B, 0x40, 0x0D, 0x0A, 0x80,
         0xE4, 0x42, 0x63, 0x07});
    Add(looks, 10, "much data", Bytes(1000, 'x'));
    Add(looks, 10, "no data", {});
}

TEST(Stories, Looking)
{
    BeginStory();
    Looks looks;
    for (const auto add : {AddBitmaps, AddIcons, AddDamaged, AddTexts})
        add(&looks);
    ExecutableDescription description = {.resources = {{u"OWN", 1, {}}}};
    for (const Look &look : looks)
        description.resources.push_back(look.resource);
    const std::string path = TestFile("looks.dll", BuildPe(description).bytes);
    Step("start", [] {
        StartProgram();
        GiveClientSize();
    });
    Step("open", [&] { Open(path); });
    for (size_t i = 0; i < looks.size(); i++) {
        const std::string number = std::to_string(100 + i);
        Step("look at " + number + ", " + looks[i].what,
             [&] { Select(looks[i].category, number + " "); });
    }
    Step("look at a kind", [] { Select("STRING TABLE", ""); });
    outside.hasNoTemporaryFolder = true;
    Step("look at a PNG with no folder for its file", [] { Select("ICON", "125 "); });
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

static void DropFiles(const std::string &good, const std::string &second)
{
    Step("drop two files on it", [&] {
        Open(good);
        Select("BINARY DATA", "500");
        Drop(second + '\0' + good + '\0' + '\0');
    });
    Step("drop nothing, and one on a window that waits for its dialog", [&] {
        Drop(std::string(2, 0));
        TakeInput(globals.mainWindow, false);
        Drop(good + '\0' + '\0');
        TakeInput(globals.mainWindow, true);
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
    DropFiles(good, second);
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
        // Only a click closes the message: no other command, nor another notification.
        for (int command : {3, (int)MAKEWPARAM(IDOK, 6), IDCANCEL})
            PressNext(command);
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
        const std::filesystem::path folder = std::filesystem::current_path();
        Command(IDM_HELP);
        EXPECT_EQ(std::filesystem::current_path(), folder);
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
                PressNext(0);
                SendMessageA(globals.mainWindow, WM_PARENTNOTIFY, WM_RBUTTONDOWN, 0);
                RunUntilIdle();
            });
    }
    Step("pick save there", [] {
        PressNext(IDM_SAVE_AS);
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
