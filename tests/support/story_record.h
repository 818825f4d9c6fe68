// What the story that is told knows of the program: filled where the interface is called
// (drive_interface.cpp), read after each step (drive_story.cpp).
#pragma once

#include "platform/win32.h"

#include <map>
#include <set>
#include <string>
#include <vector>

struct StoryRecord {
    std::vector<std::string> told; // the lines so far
    bool isTelling = false;        // whether the interface's calls are told now
    bool isBox = false;     // the system's message box is shown, which looks as the system likes
    bool isCovered = false; // something was shown over the window during the step
    int dialogs = 0;        // that are shown now, inside the calls that show them

    // What is drawn in the pane since it was last made white.
    HDC paneContext = nullptr;
    std::vector<std::string> paneTexts;
    RECT panePicture = {};

    // What was made and not yet given back, with what was made.
    std::map<const void *, std::string> made;
    std::map<const void *, std::string> names; // of cursors, icons and fonts
    int locks = 0;

    // What the program sent to its controls and itself, and what its window answered, by message.
    std::map<std::string, std::set<std::string>> sent;
    std::map<std::string, std::set<std::string>> answered;
};
extern StoryRecord story;

// Adds a line, as printf forms it, while a story is told.
void Tell(const char *format, ...) __attribute__((format(printf, 1, 2)));

// A text on one line: folders by their names, other bytes than ASCII's as numbers; "none" for NULL.
std::string Plain(const char *text);
