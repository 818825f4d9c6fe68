#include "dialogs/manual.h"

#include "platform/files.h"
#include "program/globals.h"

#include <cstdio>
#include <cstring>
#include <new>

static const char *const browsers[] = {
    "firefox.exe",  "opera.exe",    "c:\\Program Files\\Opera\\opera.exe",
    "netscape.exe", "iexplore.exe",
};

static const char failureText[] =
    " There has been an error displaying the manual page. Please ensure that there is an "
    "application installed on your system capable of opening HTML documents associated with the "
    "file extension .HTM.";

char *ProgramFilePath(const char *relativeName)
{
    static char path[MAX_PATH + 1];
    strcpy(path, globals.programDirectory);
    if (EndWithSeparator(path, sizeof path) && strlen(path) + strlen(relativeName) <= MAX_PATH)
        strcat(path, relativeName);
    else
        path[0] = 0;
    return path;
}

std::string EscapeSpaces(const std::string &text)
{
    std::string escaped;
    for (const char letter : text)
        escaped += letter == ' ' ? "%20" : std::string(1, letter);
    return escaped;
}

std::string DocumentAddress(const char *document, const char *anchor)
{
    return "file:///" + EscapeSpaces(AddressPath(document)) +
           (anchor != nullptr ? EscapeSpaces(anchor) : "");
}

static bool StartBrowser(HWND owner, const char *address)
{
    for (const char *browser : browsers)
        if ((INT_PTR)ShellExecuteA(owner, "open", browser, address, nullptr, SW_SHOWMAXIMIZED) > 32)
            return true;
    return false;
}

// Starts the application that the system associates with the document. Returns false on failure.
static bool StartAssociated(const char *document)
{
    char application[MAX_PATH];
    if ((INT_PTR)FindExecutableA(document, "", application) <= 32)
        return false;
    std::string commandLine = std::string(application) + ' ' + document;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWMAXIMIZED;
    PROCESS_INFORMATION process;
    if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS,
                        nullptr, nullptr, &startup, &process))
        return false;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

// A program that lies in the current folder and has a browser's name is none. Returns false on
// failure.
static bool StartAnything(HWND owner, const char *document, const char *address)
{
    CurrentFolder *before = LeaveCurrentFolder();
    if (before == nullptr)
        return false;
    const bool started = StartBrowser(owner, address) || StartAssociated(document);
    ReturnToFolder(before);
    return started;
}

static bool ShowDocument(HWND owner, const char *document, const char *anchor)
{
    try {
        return StartAnything(owner, document, DocumentAddress(document, anchor).c_str());
    } catch (const std::bad_alloc &) {
        return false;
    }
}

int OpenInBrowser(HWND owner, const char *document, const char *anchor)
{
    if (document[0] == 0 || !ShowDocument(owner, document, anchor))
        MessageBoxA(owner, failureText, "Message", MB_ICONINFORMATION);
    return 1;
}

int ShowManualTopic(HWND owner, const char *topic)
{
    char page[] = "html?referenc.htm";
    *strchr(page, '?') = pathSeparator;
    // Without the program's folder the page would be looked for in the current one.
    const char *document = globals.programDirectory[0] != 0 ? ProgramFilePath(page) : "";
    return OpenInBrowser(owner, document, ("#" + std::string(topic)).c_str());
}
