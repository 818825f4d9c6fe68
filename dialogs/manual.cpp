#include "dialogs/manual.h"

#include "platform/files.h"
#include "program/globals.h"

#include <cstdio>
#include <cstring>

#define ESCAPED_LENGTH (2 * MAX_PATH)
#define ADDRESS_LENGTH 1043
#define ANCHOR_LENGTH 523

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

char *EscapeSpaces(const char *text)
{
    static char escaped[ESCAPED_LENGTH + 1];
    size_t length = 0;
    for (; *text != 0; text++) {
        const size_t more = *text == ' ' ? 3 : 1;
        if (length + more > ESCAPED_LENGTH) {
            length = 0;
            break;
        }
        memcpy(escaped + length, *text == ' ' ? "%20" : text, more);
        length += more;
    }
    escaped[length] = 0;
    return escaped;
}

// Appends a part, escaped, to the address. Returns 0 when it does not fit: cut, it would be
// another.
static int AppendEscaped(char *address, const char *part)
{
    const char *escaped = EscapeSpaces(part);
    if ((escaped[0] == 0 && part[0] != 0) || strlen(address) + strlen(escaped) > ADDRESS_LENGTH)
        return 0;
    strcat(address, escaped);
    return 1;
}

static int FormAddress(char *address, const char *document, const char *anchor)
{
    strcpy(address, "file:///");
    return document[0] != 0 && AppendEscaped(address, AddressPath(document).c_str()) &&
           (anchor == nullptr || AppendEscaped(address, anchor));
}

static int StartBrowser(HWND owner, const char *address)
{
    for (const char *browser : browsers)
        if ((INT_PTR)ShellExecuteA(owner, "open", browser, address, nullptr, SW_SHOWMAXIMIZED) > 32)
            return 1;
    return 0;
}

// Starts the application that the system associates with the document. Returns 0 on failure.
static int StartAssociated(const char *document)
{
    char application[MAX_PATH];
    char commandLine[MAX_PATH + 1 + MAX_PATH + 1];
    if ((INT_PTR)FindExecutableA(document, "", application) <= 32)
        return 0;
    if (snprintf(commandLine, sizeof commandLine, "%s %s", application, document) >=
        (int)sizeof commandLine)
        return 0;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWMAXIMIZED;
    PROCESS_INFORMATION process;
    if (!CreateProcessA(nullptr, commandLine, nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS,
                        nullptr, nullptr, &startup, &process))
        return 0;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return 1;
}

int OpenInBrowser(HWND owner, const char *document, const char *anchor)
{
    char address[ADDRESS_LENGTH + 1];
    if (!(FormAddress(address, document, anchor) && StartBrowser(owner, address)) &&
        !StartAssociated(document))
        MessageBoxA(owner, failureText, "Message", MB_ICONINFORMATION);
    return 1;
}

int ShowManualTopic(HWND owner, const char *topic)
{
    char page[] = "html?referenc.htm";
    char anchor[ANCHOR_LENGTH + 1];
    *strchr(page, '?') = pathSeparator;
    snprintf(anchor, sizeof anchor, "#%s", topic);
    return OpenInBrowser(owner, ProgramFilePath(page), anchor);
}
