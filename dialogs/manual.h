// The HTML manual, shown in a web browser.
#pragma once

#include "platform/win32.h"

#include <string>

// Opens the manual at an anchor named topic. Returns 1, whatever happened.
int ShowManualTopic(HWND owner, const char *topic);

// Opens a document in the first browser that starts, at the place that anchor ("#..." or NULL)
// names, else in the application that the system associates with the document; says in the
// system's message box when neither can be had, or document is the empty text. Never waits for it.
// Returns 1.
int OpenInBrowser(HWND owner, const char *document, const char *anchor);

// The path of a file below the program's directory, in one shared buffer, which the next call
// overwrites; the empty text when it would pass MAX_PATH bytes.
char *ProgramFilePath(const char *relativeName);

// The text with every space as "%20".
std::string EscapeSpaces(const std::string &text);

// The address of a document and of the anchor (or NULL) in it, of any length.
std::string DocumentAddress(const char *document, const char *anchor);
