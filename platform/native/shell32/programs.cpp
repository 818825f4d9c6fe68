// Starting a program by name, and the desktop's application for a file.
#include <cstring>
#include <strings.h>
#include <sys/stat.h>

#include "platform/native/kernel/process.h"
#include "platform/native/no_memory.h"
#include "platform/win32/shell32.h"

// Windows' results: above 32 is success.
static HINSTANCE Result(intptr_t number)
{
    return reinterpret_cast<HINSTANCE>(number);
}

constexpr intptr_t started = 33;
constexpr intptr_t fileNotFound = 2;
constexpr intptr_t accessDenied = 5;
constexpr intptr_t noMemory = 8;
constexpr intptr_t noAssociation = 31;

static bool EndsWith(const std::string &text, const char *end)
{
    const size_t length = strlen(end);
    return text.size() > length && strcasecmp(text.c_str() + text.size() - length, end) == 0;
}

static intptr_t Start(LPCSTR file, LPCSTR parameters)
{
    std::string name = file ? file : "";
    if (EndsWith(name, ".exe"))
        name.resize(name.size() - strlen(".exe"));
    const std::string program = FindProgram(name);
    if (program.empty())
        return fileNotFound;
    std::vector<std::string> arguments;
    if (parameters)
        arguments.push_back(parameters);
    return StartProgram(program, arguments) ? started : accessDenied;
}

static intptr_t FindOpener(LPCSTR file, LPSTR path)
{
    struct stat status;
    if (!file || stat(file, &status) != 0)
        return fileNotFound;
    const bool isHtml = EndsWith(file, ".htm") || EndsWith(file, ".html");
    const std::string ask = FindProgram("xdg-mime");
    const std::string opener = FindProgram("xdg-open");
    // xdg-open alone does not tell beforehand that nothing opens the file.
    if (!isHtml || ask.empty() || opener.empty() || opener.size() >= MAX_PATH ||
        AskProgram(ask, {"query", "default", "text/html"}).empty())
        return noAssociation;
    strcpy(path, opener.c_str());
    return started;
}

HINSTANCE WINAPI ShellExecuteA(HWND, LPCSTR, LPCSTR file, LPCSTR parameters, LPCSTR, int)
{
    return Result(UnlessMemoryRunsOut(noMemory, [=] { return Start(file, parameters); }));
}

HINSTANCE WINAPI FindExecutableA(LPCSTR file, LPCSTR, LPSTR path)
{
    path[0] = 0;
    return Result(UnlessMemoryRunsOut(noMemory, [=] { return FindOpener(file, path); }));
}
