#include "platform/console.h"

#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

static bool closedOutput;
static volatile LONG stopRequested;

static std::string Utf8(const WCHAR *wide)
{
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
    std::string text(length > 0 ? static_cast<size_t>(length) : 1, 0);
    WideCharToMultiByte(CP_UTF8, 0, wide, -1, text.data(), length, nullptr, nullptr);
    text.pop_back();
    return text;
}

// Adds the names that a pattern in a path's last part stands for, by name; the argument itself when
// it holds no pattern or none has such a name. The system's shells leave this to programs.
static void AddExpanded(const WCHAR *argument, std::vector<std::string> *result)
{
    const std::wstring pattern = argument;
    const size_t folder = pattern.find_last_of(L"\\/:") + 1; // 0 when there is none
    std::vector<std::string> names;
    WIN32_FIND_DATAW found;
    if (argument[0] != L'-' && pattern.find_first_of(L"*?", folder) != std::wstring::npos) {
        HANDLE search = FindFirstFileW(argument, &found);
        for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &found))
            if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
                names.push_back(Utf8((pattern.substr(0, folder) + found.cFileName).c_str()));
        if (search != INVALID_HANDLE_VALUE)
            FindClose(search);
    }
    if (names.empty())
        names.push_back(Utf8(argument));
    std::sort(names.begin(), names.end());
    result->insert(result->end(), names.begin(), names.end());
}

std::vector<std::string> ConsoleArguments(int, char **)
{
    std::vector<std::string> result;
    int count = 0;
    WCHAR **arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i)
        AddExpanded(arguments[i], &result);
    LocalFree(arguments);
    return result;
}

void PrepareConsole()
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

bool IsTerminal(FILE *stream)
{
    DWORD mode;
    return GetConsoleMode(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream))), &mode) != 0;
}

static bool WriteConsoleText(HANDLE console, const std::string &text)
{
    const int length =
        MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring wide(static_cast<size_t>(length), 0);
    MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                        length);
    size_t done = 0;
    while (done < wide.size()) {
        // The console takes no more than a few tens of thousands of characters in one call.
        const DWORD part = static_cast<DWORD>(std::min<size_t>(wide.size() - done, 8000));
        DWORD written = 0;
        if (!WriteConsoleW(console, wide.data() + done, part, &written, nullptr) || written == 0)
            return false;
        done += written;
    }
    return true;
}

bool PrintText(FILE *stream, const std::string &text)
{
    if (IsTerminal(stream))
        return WriteConsoleText(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream))), text);
    errno = 0;
    if (fwrite(text.data(), 1, text.size(), stream) == text.size() && fflush(stream) == 0)
        return true;
    const DWORD error = GetLastError();
    closedOutput = errno == EPIPE || error == ERROR_NO_DATA || error == ERROR_BROKEN_PIPE;
    return false;
}

bool OutputIsClosed()
{
    return closedOutput;
}

static BOOL WINAPI NoteStop(DWORD)
{
    InterlockedExchange(&stopRequested, 1);
    return TRUE;
}

void CatchStopRequests()
{
    SetConsoleCtrlHandler(NoteStop, TRUE);
}

bool StopRequested()
{
    return stopRequested != 0;
}
