#include "tests/faults/failing.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <malloc.h>
#include <new>
#include <stdio_ext.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

// Thousands of folders that come and go are slow on a disk.
[[maybe_unused]] static const bool isInMemory =
    access("/dev/shm", W_OK) == 0 && setenv("TMPDIR", "/dev/shm", 0) == 0;

static Failing failing;
static long untilFailure;      // calls; 0 lets none fail
static const char *failed;     // the call that has
static std::atomic<long> live; // allocations

// Whether this call is the one that fails.
static bool IsTurnOf(Failing kind, const char *name)
{
    if (untilFailure == 0 || kind != failing || --untilFailure > 0)
        return false;
    failed = name;
    errno = kind == Failing::Files ? ENOSPC : ENOMEM;
    return true;
}

// --- allocation ---

extern "C" {

void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *block, size_t size);
void *__libc_memalign(size_t alignment, size_t size);
void __libc_free(void *block);

extern const char __executable_start, etext;
}

static bool IsOwnCode(const void *address)
{
    return address >= &__executable_start && address < &etext;
}

static const void *LibraryOf(const void *address)
{
    Dl_info info = {};
    return dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

static const void *const standardLibrary = LibraryOf((const void *)&std::__throw_length_error);

// Whether our own code asks for memory, by itself or through the standard library.
static bool IsOwnRequest(void *caller)
{
    if (IsOwnCode(caller) || LibraryOf(caller) != standardLibrary)
        return IsOwnCode(caller);
    void *frames[16];
    const int count = backtrace(frames, 16);
    int at = 0;
    while (at < count && frames[at] != caller)
        at++;
    while (at < count && LibraryOf(frames[at]) == standardLibrary)
        at++;
    return at < count && IsOwnCode(frames[at]);
}

static bool IsTurnOfAllocation(const char *name, void *caller)
{
    static bool isAsking; // what finds out allocates
    if (untilFailure == 0 || failing == Failing::Files || isAsking)
        return false;
    isAsking = true;
    const bool isMeant = failing == Failing::Allocations || IsOwnRequest(caller);
    isAsking = false;
    return isMeant && IsTurnOf(failing, name);
}

#define CALLER __builtin_return_address(0)

static void *Counted(void *block)
{
    live += block != nullptr;
    return block;
}

static void *New(size_t size, void *caller)
{
    void *block =
        IsTurnOfAllocation("new", caller) ? nullptr : Counted(__libc_malloc(size > 0 ? size : 1));
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

void *operator new(size_t size)
{
    return New(size, CALLER);
}

void *operator new[](size_t size)
{
    return New(size, CALLER);
}

extern "C" {

void *malloc(size_t size)
{
    return IsTurnOfAllocation("malloc", CALLER) ? nullptr : Counted(__libc_malloc(size));
}

void *calloc(size_t count, size_t size)
{
    return IsTurnOfAllocation("calloc", CALLER) ? nullptr : Counted(__libc_calloc(count, size));
}

void *realloc(void *block, size_t size)
{
    if (size > 0 && IsTurnOfAllocation("realloc", CALLER))
        return nullptr;
    void *moved = __libc_realloc(block, size);
    live += (moved != nullptr) - (block != nullptr && (moved != nullptr || size == 0));
    return moved;
}

void *memalign(size_t alignment, size_t size)
{
    return IsTurnOfAllocation("memalign", CALLER) ? nullptr
                                                  : Counted(__libc_memalign(alignment, size));
}

void free(void *block)
{
    live -= block != nullptr;
    __libc_free(block);
}

void *aligned_alloc(size_t alignment, size_t size)
{
    return memalign(alignment, size);
}

int posix_memalign(void **block, size_t alignment, size_t size)
{
    *block = memalign(alignment, size);
    return *block == nullptr ? ENOMEM : 0;
}

// --- the calls that the linker sends here ---

static Failing AnyAllocation()
{
    return failing == Failing::Files ? Failing::Allocations : failing;
}

#define WRAP(result, name, parameters, arguments, kind, failure)                                   \
    result __real_##name parameters;                                                               \
    result __wrap_##name parameters;                                                               \
    result __wrap_##name parameters                                                                \
    {                                                                                              \
        return IsTurnOf(kind, #name) ? failure : __real_##name arguments;                          \
    }

WRAP(void *, mmap, (void *at, size_t size, int protection, int flags, int file, off_t offset),
     (at, size, protection, flags, file, offset), AnyAllocation(), MAP_FAILED)
WRAP(int, open, (const char *path, int flags, mode_t mode), (path, flags, mode), Failing::Files, -1)
WRAP(int, openat, (int folder, const char *path, int flags, mode_t mode),
     (folder, path, flags, mode), Failing::Files, -1)
WRAP(FILE *, fopen, (const char *path, const char *mode), (path, mode), Failing::Files, nullptr)
WRAP(FILE *, fdopen, (int file, const char *mode), (file, mode), Failing::Files, nullptr)
WRAP(ssize_t, pread, (int file, void *bytes, size_t size, off_t offset),
     (file, bytes, size, offset), Failing::Files, -1)
WRAP(int, mkdir, (const char *path, mode_t mode), (path, mode), Failing::Files, -1)
WRAP(int, mkdirat, (int folder, const char *path, mode_t mode), (folder, path, mode),
     Failing::Files, -1)
WRAP(int, renameat, (int from, const char *oldName, int to, const char *newName),
     (from, oldName, to, newName), Failing::Files, -1)
WRAP(int, renameat2, (int from, const char *oldName, int to, const char *newName, unsigned flags),
     (from, oldName, to, newName, flags), Failing::Files, -1)

// Those that fail when a part is done.

size_t __real_fwrite(const void *bytes, size_t size, size_t count, FILE *file);
size_t __wrap_fwrite(const void *bytes, size_t size, size_t count, FILE *file);
size_t __wrap_fwrite(const void *bytes, size_t size, size_t count, FILE *file)
{
    if (!IsTurnOf(Failing::Files, "fwrite"))
        return __real_fwrite(bytes, size, count, file);
    const size_t written = __real_fwrite(bytes, size, count / 2, file);
    errno = ENOSPC;
    return written;
}

size_t __real_fread(void *bytes, size_t size, size_t count, FILE *file);
size_t __wrap_fread(void *bytes, size_t size, size_t count, FILE *file);
size_t __wrap_fread(void *bytes, size_t size, size_t count, FILE *file)
{
    const bool fails = IsTurnOf(Failing::Files, "fread");
    const size_t read = __real_fread(bytes, size, fails ? count / 2 : count, file);
    if (fails)
        errno = EIO;
    return read;
}

int __real_fflush(FILE *file);
int __wrap_fflush(FILE *file);
int __wrap_fflush(FILE *file)
{
    if (!IsTurnOf(Failing::Files, "fflush"))
        return __real_fflush(file);
    __fpurge(file);
    return EOF;
}

int __real_fclose(FILE *file);
int __wrap_fclose(FILE *file);
int __wrap_fclose(FILE *file)
{
    const bool fails = IsTurnOf(Failing::Files, "fclose");
    const int closed = __real_fclose(file);
    if (fails)
        errno = ENOSPC;
    return fails ? EOF : closed;
}
}

long CountLiveAllocations()
{
    return live;
}

const char *FailedCall()
{
    return failed;
}

int FailEachOnce(Failing kind, const std::function<void()> &act, const std::function<void()> &check)
{
    for (int number = 1;; number++) {
        // Before anything is counted: it allocates.
        SCOPED_TRACE(testing::Message() << "call " << number);
        failed = nullptr;
        failing = kind;
        untilFailure = number;
        try {
            act();
            untilFailure = 0;
        } catch (const std::exception &exception) {
            untilFailure = 0;
            ADD_FAILURE() << exception.what();
        }
        check();
        if (failed == nullptr || testing::Test::HasFatalFailure())
            return number - 1;
    }
}
