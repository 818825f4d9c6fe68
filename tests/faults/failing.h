// Lets one allocation, or one call on files, fail: new and the C library's malloc, calloc, realloc
// and memalign in the whole process, the layer's mmap; and the program's own calls that open, make,
// read, write, close and move.
#pragma once

#include <functional>

enum class Failing {
    Allocations,
    OwnAllocations, // of our own code and through the standard library: Qt is not made for it
    Files,
};

// Runs `act` over and over, with the first call of that kind failing, then the second, and so on,
// until a run has no call left to fail, and `check` after each, with what failed. Nothing fails
// during `check`. Returns the number of calls that failed.
int FailEachOnce(Failing kind, const std::function<void()> &act,
                 const std::function<void()> &check);

// The call that has failed in the last run, for `check`; NULL when none has.
const char *FailedCall();

// How many blocks of the C library's are allocated in the process.
long CountLiveAllocations();
