#include "platform/console.h"

#include <cerrno>
#include <csignal>
#include <unistd.h>

static bool closedOutput;
static volatile std::sig_atomic_t stopRequested;

std::vector<std::string> ConsoleArguments(int count, char **arguments)
{
    return count > 1 ? std::vector<std::string>(arguments + 1, arguments + count)
                     : std::vector<std::string>();
}

void PrepareConsole()
{
    // A reader that goes away must end a listing as a failed write, so that files are closed and
    // the exit status is told.
    signal(SIGPIPE, SIG_IGN);
}

bool IsTerminal(FILE *stream)
{
    return isatty(fileno(stream)) != 0;
}

bool PrintText(FILE *stream, const std::string &text)
{
    errno = 0;
    if (fwrite(text.data(), 1, text.size(), stream) == text.size() && fflush(stream) == 0)
        return true;
    closedOutput = errno == EPIPE;
    return false;
}

bool OutputIsClosed()
{
    return closedOutput;
}

static void NoteStop(int)
{
    stopRequested = 1;
}

void CatchStopRequests()
{
    signal(SIGINT, NoteStop);
    signal(SIGTERM, NoteStop);
    signal(SIGHUP, NoteStop);
}

bool StopRequested()
{
    return stopRequested != 0;
}
