#include "platform/console.h"

#include <cerrno>
#include <csignal>
#include <unistd.h>

static int closedOutput;
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

int IsTerminal(FILE *stream)
{
    return isatty(fileno(stream));
}

int PrintText(FILE *stream, const std::string &text)
{
    errno = 0;
    if (fwrite(text.data(), 1, text.size(), stream) == text.size() && fflush(stream) == 0)
        return 1;
    closedOutput = errno == EPIPE;
    return 0;
}

int OutputIsClosed()
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

int StopRequested()
{
    return stopRequested;
}
