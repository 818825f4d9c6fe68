#include "platform/native/qt/end_signals.h"

#include <QSocketNotifier>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <unistd.h>
#include <utility>

#include "platform/native/user/window_table.h"

static const int endSignals[] = {SIGHUP, SIGINT, SIGTERM};

// A handler may do next to nothing; it writes a byte, which Qt's loop finds.
static int wireEnds[2] = {-1, -1};
static std::unique_ptr<QSocketNotifier> listener;

static void OnSignal(int)
{
    const int error = errno;
    [[maybe_unused]] const ssize_t written = write(wireEnds[1], "", 1);
    errno = error;
}

static void CloseAll()
{
    char byte;
    if (read(wireEnds[0], &byte, 1) != 1)
        return;
    for (HWND window : TopLevelWindows())
        if (!WindowOf(window)->owner)
            PostMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
}

static void SetHandlers(void (*from)(int), void (*to)(int))
{
    for (int number : endSignals) {
        struct sigaction action;
        if (sigaction(number, nullptr, &action) != 0 || action.sa_handler != from)
            continue;
        action = {};
        action.sa_handler = to;
        action.sa_flags = SA_RESTART | SA_RESETHAND;
        sigaction(number, &action, nullptr);
    }
}

void WatchEndSignals()
{
    if (pipe2(wireEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    listener = std::make_unique<QSocketNotifier>(wireEnds[0], QSocketNotifier::Read);
    QObject::connect(listener.get(), &QSocketNotifier::activated, CloseAll);
    SetHandlers(SIG_DFL, OnSignal);
}

void UnwatchEndSignals()
{
    if (!listener)
        return;
    SetHandlers(OnSignal, SIG_DFL);
    listener.reset();
    for (int &end : wireEnds)
        close(std::exchange(end, -1));
}
