#include "platform/native/kernel/process.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/native/no_memory.h"
#include "platform/win32/kernel.h"

static bool IsProgram(const std::string &path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           access(path.c_str(), X_OK) == 0;
}

static std::vector<char *> MakeArguments(const std::string &path,
                                         const std::vector<std::string> &arguments)
{
    // The system takes them without const and leaves them as they are.
    std::vector<char *> pointers = {const_cast<char *>(path.c_str())};
    for (const std::string &argument : arguments)
        pointers.push_back(const_cast<char *>(argument.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

// In the new process: becomes the program with the signals as they are at first. Returns on
// failure.
static void BecomeProgram(char *const *arguments)
{
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    for (int number : {SIGPIPE, SIGXFSZ, SIGINT, SIGTERM, SIGCHLD})
        signal(number, SIG_DFL);
    execv(arguments[0], arguments);
}

// Waits for a child, the only one that there is. -1 for a fork that failed, and for a child that
// somebody else waited for.
static int WaitFor(pid_t child)
{
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

// Reads what comes from a pipe until it is closed, as much of it as the text has room for.
static void ReadPipe(int from, std::string *text)
{
    char piece[256];
    for (ssize_t got; (got = read(from, piece, sizeof piece)) > 0;)
        text->append(piece, std::min(text->capacity() - text->size(), static_cast<size_t>(got)));
}

std::string FindProgram(const std::string &name)
{
    if (name.find('/') != std::string::npos)
        return IsProgram(name) ? name : "";
    const char *value = getenv("PATH");
    std::string_view list = value ? value : "/usr/local/bin:/usr/bin:/bin";
    while (!name.empty() && !list.empty()) {
        const std::string folder(list.substr(0, list.find(':')));
        list.remove_prefix(std::min(folder.size() + 1, list.size()));
        // Nothing is run out of whatever folder is the current one.
        if (folder.starts_with('/') && IsProgram(folder + '/' + name))
            return folder + '/' + name;
    }
    return "";
}

bool StartProgram(const std::string &path, const std::vector<std::string> &arguments)
{
    const std::vector<char *> pointers = MakeArguments(path, arguments);
    std::string failed;
    int failure[2];
    if (pipe2(failure, O_CLOEXEC) != 0)
        return false;
    // The program is a grandchild, so that nobody has to wait for its end.
    const pid_t child = fork();
    if (child == 0) {
        setsid();
        const pid_t grandchild = fork();
        if (grandchild == 0)
            BecomeProgram(pointers.data());
        const char mark = '!';
        [[maybe_unused]] const ssize_t told =
            grandchild > 0 ? ssize_t{} : write(failure[1], &mark, sizeof mark);
        _exit(EXIT_SUCCESS);
    }
    close(failure[1]);
    // The pipe closes by itself when the program has begun.
    ReadPipe(failure[0], &failed);
    close(failure[0]);
    return WaitFor(child) != -1 && failed.empty();
}

std::string AskProgram(const std::string &path, const std::vector<std::string> &arguments)
{
    const std::vector<char *> pointers = MakeArguments(path, arguments);
    std::string text;
    text.reserve(4096); // what is longer is no answer
    int output[2];
    if (pipe2(output, O_CLOEXEC) != 0)
        return "";
    const pid_t child = fork();
    if (child == 0) {
        dup2(output[1], STDOUT_FILENO);
        BecomeProgram(pointers.data());
        _exit(EXIT_FAILURE);
    }
    close(output[1]);
    ReadPipe(output[0], &text);
    close(output[0]);
    if (WaitFor(child) != 0)
        return "";
    return text.substr(0, text.find('\n'));
}

// The line begins with the program's name, which may hold spaces.
static bool StartLine(const std::string &line)
{
    for (size_t end = 0; end != std::string::npos;) {
        end = line.find(' ', end + 1);
        const std::string program = FindProgram(line.substr(0, end));
        if (program.empty())
            continue;
        std::vector<std::string> arguments;
        if (end != std::string::npos)
            arguments.push_back(line.substr(end + 1));
        return StartProgram(program, arguments);
    }
    return false;
}

BOOL WINAPI CreateProcessA(LPCSTR, LPSTR commandLine, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES,
                           BOOL, DWORD, LPVOID, LPCSTR, LPSTARTUPINFOA,
                           LPPROCESS_INFORMATION information)
{
    if (!UnlessMemoryRunsOut(false, [=] { return StartLine(commandLine); }))
        return FALSE;
    *information = {};
    return TRUE;
}

BOOL WINAPI CloseHandle(HANDLE handle)
{
    return !handle;
}
