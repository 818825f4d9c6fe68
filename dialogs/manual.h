// The HTML manual, shown in a web browser.
#pragma once

#include "platform/win32.h"

// Opens the manual at an anchor named topic. Returns 1, whatever happened.
int ShowManualTopic(HWND owner, const char *topic);

// Opens a document in the first browser that starts, at the place that anchor ("#..." or NULL)
// names, else in the application that the system associates with the document; says in the
// system's message box when neither can be had. Never waits for it. Returns 1.
int OpenInBrowser(HWND owner, const char *document, const char *anchor);

// The path of a file below the program's directory, and a text with every space as "%20". Each
// returns one shared buffer of its own, which its next call overwrites; the empty text when the
// result would pass MAX_PATH or twice MAX_PATH bytes.
char *ProgramFilePath(const char *relativeName);
char *EscapeSpaces(const char *text);
