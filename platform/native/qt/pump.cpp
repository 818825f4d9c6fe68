#include "platform/native/qt/pump.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>
#include <utility>

#include "platform/native/no_memory.h"
#include "platform/native/qt/registry.h"
#include "platform/native/user/queue.h"

void (*afterQtEvents)() = nullptr;

static bool isWoken = false;
static int depth = 0;

// How many of Qt's own loops were running when the innermost step began.
static int ownLoopLevel = 0;

namespace
{

// Stands in Qt's event queue for the quiet half's. Where a loop of Qt's own runs, inside a step,
// the messages are dispatched from here; else the step ends and our loop takes them.
class Waker : public QObject
{
  public:
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        isPosted = false;
        if (QThread::currentThread()->loopLevel() > ownLoopLevel) {
            DispatchWaiting();
            if (afterQtEvents)
                afterQtEvents();
        }
        return true;
    }

    bool isPosted = false;
};

} // namespace

static Waker &TheWaker()
{
    static Waker waker;
    return waker;
}

void WakeQt()
{
    isWoken = true;
    Waker &waker = TheWaker();
    if (depth == 0 || std::exchange(waker.isPosted, true))
        return;
    // Without one a loop of Qt's own hears of the message at its next event.
    if (!DoesMemorySuffice([&] { QCoreApplication::postEvent(&waker, new QEvent(QEvent::User)); }))
        waker.isPosted = false;
}

bool RunQtEvents(bool wait)
{
    // Widgets that went are deleted where no event of theirs can be under way.
    if (depth == 0)
        DeleteDropped();
    if (afterQtEvents)
        afterQtEvents();
    const int levelBefore = std::exchange(ownLoopLevel, QThread::currentThread()->loopLevel());
    ++depth;
    const bool mayWait = wait && !std::exchange(isWoken, false);
    QCoreApplication::processEvents(mayWait ? QEventLoop::WaitForMoreEvents
                                            : QEventLoop::AllEvents);
    --depth;
    ownLoopLevel = levelBefore;
    if (afterQtEvents)
        afterQtEvents();
    return true;
}
