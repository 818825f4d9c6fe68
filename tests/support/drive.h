// Drives the whole program from a test, through its messages: starts and stops it, answers the
// dialogs that it shows, and tells what it painted.
#pragma once

#include "platform/win32.h"

#include "samples/builder/bytes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// --- the program ---

// Starts the program as its entry point does, with nothing left of an earlier start, and runs until
// it is idle. The current folder is the one that holds the host module, or the one that is given.
// Returns 0 when the program has asked to quit.
int StartProgram(const std::string &commandLine = "", const std::string &folder = "");

// Dispatches messages until none is waiting. Returns 0 when the program has asked to quit.
int RunUntilIdle();

// Closes the main window if it is still there, and shuts the program down. Answers that were
// prepared and not used are a failure.
void StopProgram();

// A test of the running program.
struct ProgramTest : testing::Test {
    void SetUp() override
    {
        StartProgram();
    }

    void TearDown() override
    {
        StopProgram();
    }
};

// Whether the window is still there, and its text, whoever's it is.
bool IsAlive(HWND window);
std::string TextOf(HWND window);

// --- dialogs, choosers and menus; each answer is for the next one that is shown ---

// Presses a button of a message dialog, message box or the About box by its id, or of the system's
// question whether to replace the file that was chosen; picks a command in a popup menu, which 0
// closes.
void PressNext(int button);

// Confirms a path in a file chooser; an empty one leaves what the chooser offers.
void ChooseNext(const std::string &path);

// Confirms, in the chooser of the save command, a path at which no file can be created.
void ChooseUncreatable();

// Cancels a file chooser.
void CancelNext();

// What was shown since the last call: a dialog's text, "chooser: " and the name that a chooser
// offered, "menu: " and the items of a menu, gray ones in brackets.
std::vector<std::string> TakeShown();

// Tells a story, if one is told, what a dialog shows (drive_story.h).
void TellDialog(HWND dialog);

// What the two systems' sources have in common: the next answer to give (`otherwise`, and a
// failure, when none was prepared), what was shown, and the end of a program's run.
struct Answer {
    UINT id;          // of the button or command
    std::string path; // to choose
};
extern std::vector<std::string> allShown;
std::string TextStyle(const std::string &face, int height, COLORREF color, bool isTransparent);
Answer NextAnswer(const std::string &what, UINT otherwise);
void ExpectAllAnswered();

// --- what is painted ---

// The font, colour and background of the text that is drawn into a device context.
std::string TextStyleOf(HDC dc);

// Pixels, 0xRRGGBB, row by row from the top.
struct Pixels {
    int width;
    int height;
    std::vector<uint32_t> values;

    uint32_t At(int x, int y) const
    {
        return values[(size_t)y * (size_t)width + (size_t)x];
    }
};

// The pixels that a window shows, its children and what lies over them included.
Pixels PixelsOf(HWND window);

// What follows stands on the interface alone: one source for both systems.

// --- the window ---

HWND Tree();
HWND Pane();
std::string TitleText();

// Whether an item of the main menu is gray.
bool IsGray(UINT command);

// Sends a command as the menu does, and runs until idle.
int Command(UINT id);

// The tree's labels in its order, resource items with two spaces in front.
std::vector<std::string> TreeLabels();

// Selects the item whose label begins so, below the category whose label is given (an empty begin
// selects the category item itself), and runs until idle.
void Select(const std::string &category, const std::string &begin);

// --- files ---

// A file with a resource or more of every kind: bitmap 101, icons 1 (4 bits) and 2 (PNG), string
// table 7, and among the binary data 500 (a sound) and 501.
Bytes EveryKind();
Bytes ShortSound();

// A folder of its own for the running test, empty at the first call; ends with a separator.
std::string TestFolder();

// Writes a file into it and returns its path.
std::string TestFile(const std::string &name, const Bytes &bytes);
