// Qt's events, run a step at a time from the quiet half's message loops.
#pragma once

// Entries of the visible half's table.
bool RunQtEvents(bool wait);
void WakeQt();

// Called before and after each step, and after messages were dispatched inside a loop of Qt's own:
// what the quiet half left is to be taken in. NULL: nothing is called.
extern void (*afterQtEvents)();
