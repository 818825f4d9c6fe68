#include "cli/progress.h"

#include "platform/console.h"

typedef std::chrono::steady_clock Clock;

Progress StartProgress(FILE *err)
{
    return {err, Clock::now(), {}};
}

void ShowProgress(Progress *progress, size_t done, size_t total, const char *what)
{
    const Clock::time_point now = Clock::now();
    if (now - progress->start < std::chrono::seconds(1) ||
        now - progress->shown < std::chrono::milliseconds(100) || !IsTerminal(progress->err))
        return;
    progress->shown = now;
    fprintf(progress->err, "\r%zu of %zu %s", done, total, what);
    fflush(progress->err);
}

void ClearProgress(Progress *progress)
{
    if (progress->shown != Clock::time_point())
        fprintf(progress->err, "\r%40s\r", "");
    progress->shown = Clock::time_point();
}
