// Qt's events, run a step at a time from the quiet half's message loops.
#pragma once

// Entries of the visible half's table.
bool RunQtEvents(bool wait);
void WakeQt();

// Called after each step, and before painting: what the quiet half left to be taken in.
extern void (*afterQtEvents)();
