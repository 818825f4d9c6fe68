#include "tests/support/drive_story.h"

#include "program/globals.h"
#include "program/ids.h"
#include "program/routines.h"
#include "shell/main_window.h"
#include "tests/support/story_record.h"
#include "tests/support/temp_folder.h"
#include "tests/support/transcript.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <filesystem>

Outside outside;

StoryRecord story;

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

std::string Plain(const char *text)
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
    Replace(from, "\\VLXPRO.EXE", "/VLXPRO.EXE");
    std::string plain;
    for (const char c : from) {
        char number[8];
        snprintf(number, sizeof number, "\\x%02X", (unsigned)(unsigned char)c);
        plain += c >= ' ' && c < 127 ? std::string(1, c) : number;
    }
    return '"' + plain + '"';
}

void Tell(const char *format, ...)
{
    char line[10000];
    va_list values;
    va_start(values, format);
    vsnprintf(line, sizeof line, format, values);
    va_end(values);
    if (story.isTelling)
        story.told.push_back(line);
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

// The picture's place and size, and its first pixels as letters: white is a point.
static std::string Picture()
{
    static const std::map<uint32_t, char> letters = {
        {0xFFFFFF, '.'}, {0x000000, 'k'}, {0xFF0000, 'r'}, {0x00FF00, 'g'},
        {0x0000FF, 'b'}, {0xFFFF00, 'y'}, {0x7F7FFF, 'l'}};
    const RECT &at = story.panePicture;
    const Pixels pixels = PixelsOf(Pane());
    std::string text = " at " + std::to_string(at.left) + ", " + std::to_string(at.top) + ", " +
                       std::to_string(at.right - at.left) + " x " +
                       std::to_string(at.bottom - at.top);
    for (LONG y = at.top; y < at.bottom && y < at.top + 10; y++) {
        text += "\n  ";
        for (LONG x = at.left; x < at.right && x < at.left + 40; x++) {
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

static void TellFiles(std::map<std::string, Bytes> &before)
{
    std::map<std::string, Bytes> now = FilesNow();
    for (const auto &[name, bytes] : before)
        if (now.count(name) == 0)
            Tell("file %s is gone", name.c_str());
    for (const auto &[name, bytes] : now)
        if (before.count(name) == 0 || before[name] != bytes)
            Tell("file %s: %s", name.c_str(), Described(bytes).c_str());
}

static void TellWhatChanged()
{
    if (!IsAlive(globals.mainWindow)) {
        Tell("the window is gone");
        standing.clear();
        story.paneTexts.clear();
        story.panePicture = {};
        return;
    }
    TellIfNew("title", " " + Plain(TitleText().c_str()));
    TellIfNew("menu", MenuStates());
    TellIfNew("layout", Layout());
    TellIfNew("held", " " + std::to_string(story.made.size()) + " things, " +
                          std::to_string(story.locks) + " of them locked");
    TellIfNew("tree", JoinLines(TreeLabels()));
    // Whether what was covered is painted anew is the system's matter.
    if (story.isCovered)
        InvalidateRect(Pane(), nullptr, FALSE);
    story.isCovered = false;
    UpdateWindow(Pane());
    TellIfNew("texts", JoinLines(story.paneTexts));
    TellIfNew("picture", story.panePicture.right > story.panePicture.left ? Picture() : "");
}

// --- the story ---

// The picture down the About box's edge, by some of its pixels.
static void TellStrip(HWND strip)
{
    UpdateWindow(strip);
    const Pixels pixels = PixelsOf(strip);
    std::string shown;
    for (const auto &[x, y] : {std::pair(10, 10), {40, 2}, {30, 150}, {pixels.width - 1, 150}}) {
        const uint32_t pixel = pixels.At(x, y);
        const COLORREF color = RGB(pixel >> 16, pixel >> 8, pixel);
        char number[16];
        snprintf(number, sizeof number, " %06X", (unsigned)pixel);
        // These two are the desktop's.
        shown += color == GetSysColor(COLOR_BTNSHADOW) ? " shadow"
                 : color == GetSysColor(COLOR_BTNFACE) ? " ground"
                                                       : number;
    }
    Tell("its strip shows%s", shown.c_str());
}

void TellDialog(HWND dialog)
{
    if (!story.isTelling || story.dialogs == 0 || story.isBox)
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
    story.told.clear();
    story.made.clear();
    story.names.clear();
    story.sent.clear();
    story.answered.clear();
    standing.clear();
    story.locks = 0;
    outside = {};
    outside.userFolder = TestFolder() + "user";
    story.isTelling = true;
}

void Step(const std::string &what, const std::function<void()> &act)
{
    story.told.push_back("");
    story.told.push_back("> " + what);
    std::map<std::string, Bytes> before = FilesNow();
    act();
    TellWhatChanged();
    TellFiles(before);
}

static std::string Joined(const std::set<std::string> &values)
{
    std::string text;
    for (const std::string &value : values)
        text += " " + value;
    return text;
}

void EndStory(const std::string &name)
{
    if (IsAlive(globals.mainWindow))
        Step("end", [] { DestroyWindow(globals.mainWindow); });
    StopProgram();
    for (const auto &[what, all] :
         {std::pair("sent", story.sent), std::pair("answered", story.answered)})
        for (const auto &[message, values] : all)
            Tell("%s %s:%s", what, message.c_str(), Joined(values).c_str());
    for (const auto &[handle, what] : story.made)
        Tell("left: %s", what.c_str());
    Tell("left: %d locks", story.locks);
    story.isTelling = false;
    ExpectTold(story.told, STORIES_FOLDER "/" + name + ".txt",
               TOLD_FOLDER "/" + name + ".told.txt");
}
