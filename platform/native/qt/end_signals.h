// The signals that ask a program to end: SIGHUP, SIGINT and SIGTERM.
#pragma once

// From now on the first such signal closes the windows that have no owner, as their close boxes do
// but whatever dialog is open, so that the program puts its things away. The second ends it at
// once. A signal that is ignored, or has a handler, stays so. Without a pipe to spare nothing is
// watched.
void WatchEndSignals();

// The signals do again what they did before.
void UnwatchEndSignals();
