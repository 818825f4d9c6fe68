// The one queue of messages, and how loops take from it.
#pragma once

#include "platform/win32/user.h"

enum class Taken {
    Message, // one was taken
    Quit,    // a quit request waits; the message is WM_QUIT with its exit code in wParam
    Nothing,
};

// Takes the next message that waits, in the order posted, quit, input, paint. A quit request is
// told and stays; nested loops end on it and leave it to the outermost. Before a press of the mouse
// is taken, the window's parents get WM_PARENTNOTIFY.
Taken TakeMessage(MSG *message);

// The same, but with nothing there the display's events are run, once, before the answer Nothing.
// Loops test what they wait for after every answer. With no display either, the answer is Quit.
Taken WaitForMessage(MSG *message);

// Dispatches all that waits, but no quit request. The visible half calls it where a loop of the
// display's own runs.
void DispatchWaiting();

// Puts what the user did in the queue, after all that is posted; without memory it is not done.
void AddInput(const MSG &message);

// What SendMessageA does, but a procedure that runs out of memory throws out of it, where
// SendMessageA answers 0.
LRESULT CallProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Whether a quit request waits.
bool IsQuitting();
