#include "platform/native/user/queue.h"

#include <deque>

#include "platform/native/no_memory.h"
#include "platform/native/user/painting.h"
#include "platform/native/user/window_table.h"
#include "platform/native/visible.h"

static std::deque<MSG> posted;
static std::deque<MSG> inputs;
static bool isQuitting = false;
static int quitCode = 0;

static bool TakePosted(MSG *message)
{
    while (!posted.empty()) {
        *message = posted.front();
        posted.pop_front();
        if (WindowOf(message->hwnd))
            return true;
    }
    return false;
}

// A press is told to a child's parents before the child gets it; they may do anything, the end of
// the child included.
static void NotifyParents(const MSG &press)
{
    const Window *child = WindowOf(press.hwnd);
    while (child && child->parent) {
        const Window *parent = WindowOf(child->parent);
        const POINT origin = ClientOriginOf(parent);
        const HWND next = parent->self;
        SendMessageA(next, WM_PARENTNOTIFY, press.message,
                     MAKELPARAM(press.pt.x - origin.x, press.pt.y - origin.y));
        child = WindowOf(next);
    }
}

static bool TakeInput(MSG *message)
{
    while (!inputs.empty()) {
        *message = inputs.front();
        inputs.pop_front();
        const Window *window = WindowOf(message->hwnd);
        if (!window || !TakesInput(window))
            continue;
        if (message->message == WM_LBUTTONDOWN || message->message == WM_RBUTTONDOWN)
            NotifyParents(*message);
        if (WindowOf(message->hwnd))
            return true;
    }
    return false;
}

static bool TakePaint(MSG *message)
{
    const HWND window = NextInvalidWindow();
    *message = {window, WM_PAINT, 0, 0, {}};
    return window;
}

Taken TakeMessage(MSG *message)
{
    if (TakePosted(message))
        return Taken::Message;
    if (isQuitting) {
        *message = {nullptr, WM_QUIT, static_cast<WPARAM>(quitCode), 0, {}};
        return Taken::Quit;
    }
    return TakeInput(message) || TakePaint(message) ? Taken::Message : Taken::Nothing;
}

Taken WaitForMessage(MSG *message)
{
    const Taken taken = TakeMessage(message);
    if (taken != Taken::Nothing)
        return taken;
    return visible.runEvents(true) ? Taken::Nothing : Taken::Quit;
}

void DispatchWaiting()
{
    MSG message;
    while (TakeMessage(&message) == Taken::Message)
        DispatchMessageA(&message);
}

void AddInput(const MSG &message)
{
    if (DoesMemorySuffice([&] { inputs.push_back(message); }))
        visible.wakeUp();
}

bool IsQuitting()
{
    return isQuitting;
}

BOOL WINAPI PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!WindowOf(window) || !DoesMemorySuffice([&] {
            posted.push_back({window, message, wParam, lParam, {}});
        }))
        return FALSE;
    visible.wakeUp();
    return TRUE;
}

BOOL WINAPI GetMessageA(LPMSG message, HWND, UINT, UINT)
{
    for (;;) {
        switch (WaitForMessage(message)) {
        case Taken::Message: return TRUE;
        case Taken::Quit: isQuitting = false; return FALSE;
        case Taken::Nothing: break;
        }
    }
}

BOOL WINAPI TranslateMessage(const MSG *)
{
    return FALSE;
}

LRESULT WINAPI DispatchMessageA(const MSG *message)
{
    return SendMessageA(message->hwnd, message->message, message->wParam, message->lParam);
}

void WINAPI PostQuitMessage(int exitCode)
{
    isQuitting = true;
    quitCode = exitCode;
    visible.wakeUp();
}

LRESULT CallProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const Window *record = WindowOf(window);
    return record ? record->windowClass->procedure(window, message, wParam, lParam) : 0;
}

LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return UnlessMemoryRunsOut<LRESULT>(
        0, [=] { return CallProcedure(window, message, wParam, lParam); });
}
