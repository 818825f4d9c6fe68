#include "platform/win32.h"

#include <gtest/gtest.h>

#include <cstring>
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

static size_t PagesOfProcess()
{
    size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages;
}

TEST(Memory, BlocksOfEverySizeBeginZeroedAndAreGivenBack)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer keeps what is freed";
#endif
    static const BYTE zeros[5000000] = {};
    size_t before = 0;
    for (int round = 0; round < 40; round++) {
        if (round == 3)
            before = PagesOfProcess();
        HGLOBAL blocks[60];
        for (size_t i = 0; i < std::size(blocks); i++) {
            const size_t size = i < 50 ? 99999 : i < 58 ? 131072 : 5000000;
            blocks[i] = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
            void *bytes = GlobalLock(blocks[i]);
            ASSERT_EQ(memcmp(bytes, zeros, size), 0);
            memset(bytes, 1, size);
        }
        for (HGLOBAL block : blocks) {
            GlobalReAlloc(block, GlobalSize(block) + 3000000, GMEM_MOVEABLE);
            if (GlobalSize(block) % 2 == 0)
                GlobalReAlloc(block, 0, GMEM_MOVEABLE);
            GlobalFree(block);
        }
    }
    EXPECT_LT(PagesOfProcess(), before + 2000);
}

TEST(Memory, GrowsToNearlyAllThereIsAndThenAnswersNull)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer needs more address space than any limit leaves";
#endif
    std::vector<HGLOBAL> empty(1 << 20);
    HGLOBAL growing = GlobalAlloc(GMEM_MOVEABLE, 1);
    const size_t room = 64 << 20;
    LimitMemory(PagesOfProcess() * (size_t)sysconf(_SC_PAGESIZE) + room);
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
