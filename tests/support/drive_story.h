// Tells what the whole program does, as a text to compare with the expected one.
#pragma once

#include "tests/support/drive.h"

// What the program meets outside of itself while a story is told.
struct Outside {
    std::string userFolder;   // where the settings lie
    DWORD filter = 0;         // that the user leaves selected in the open chooser; 0: the first one
    std::string browser;      // the one that is there
    std::string application;  // that the system associates with HTML; empty: none
    bool cannotStart = false; // the application
    bool hasNoTemporaryFolder = false;
    int blocksLeft = -1; // of memory that can still be had; -1: any number
};
extern Outside outside;

// The client area that a story gives to the window, so that all that is measured in it is the same
// on both systems.
#define STORY_WIDTH 700
#define STORY_HEIGHT 500

// Begins to tell, before the program is started.
void BeginStory();

// Does one thing, and tells how it went and what the user sees that is new.
void Step(const std::string &what, const std::function<void()> &act);

// Ends the program and compares what was told with tests/shell/stories/NAME.txt.
void EndStory(const std::string &name);
