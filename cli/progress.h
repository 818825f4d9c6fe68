// How far long work has come, shown on a terminal: "3 of 20 files", over and over in one line.
#pragma once

#include <chrono>
#include <cstdio>

struct Progress {
    FILE *err;
    std::chrono::steady_clock::time_point start; // of the work
    std::chrono::steady_clock::time_point shown; // when it was shown last; never: the epoch
};

// Starts work whose progress goes to err.
Progress StartProgress(FILE *err);

// Shows it, when the work has taken a while, err is a terminal, and it was not shown just before.
void ShowProgress(Progress *progress, size_t done, size_t total, const char *what);

// Takes it away, before anything else is printed.
void ClearProgress(Progress *progress);
