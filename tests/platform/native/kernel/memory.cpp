#include "platform/win32.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sys/resource.h>
#include <unistd.h>

// Lets the process have that many bytes of memory; 0 lifts the limit.
static void LimitMemory(rlim_t bytes)
{
    rlimit limit;
    getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = bytes == 0 ? limit.rlim_max : bytes;
    setrlimit(RLIMIT_AS, &limit);
}

TEST(Memory, GrowsToNearlyAllThereIsAndThenAnswersNull)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer needs more address space than any limit leaves";
#endif
    std::vector<HGLOBAL> empty(1 << 20);
    HGLOBAL growing = GlobalAlloc(GMEM_MOVEABLE, 1);
    const size_t room = 64 << 20;
    size_t pages = 0; // that the process has
    std::ifstream("/proc/self/statm") >> pages;
    LimitMemory(pages * (size_t)sysconf(_SC_PAGESIZE) + room);
    size_t size = 0, count = 0;
    while (GlobalReAlloc(growing, size + 1000, GMEM_MOVEABLE) != nullptr)
        size += 1000;
    while (count < empty.size() && (empty[count] = GlobalAlloc(GMEM_MOVEABLE, 0)) != nullptr)
        count++;
    LimitMemory(0);
    EXPECT_GT(size, room * 3 / 4); // half of it if growing took a copy
    EXPECT_LT(count, empty.size());
    GlobalFree(growing);
    for (size_t i = 0; i < count; i++)
        GlobalFree(empty[i]);
}
