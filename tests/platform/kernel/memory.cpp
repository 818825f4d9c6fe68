#include "platform/win32.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

static const UINT zeroed = GMEM_MOVEABLE | GMEM_ZEROINIT;

static bool AreAll(const void *bytes, size_t size, BYTE value)
{
    const BYTE *at = (const BYTE *)bytes;
    return std::all_of(at, at + size, [value](BYTE each) { return each == value; });
}

TEST(Memory, LocksAreCounted)
{
    HGLOBAL block = GlobalAlloc(zeroed, 8);
    EXPECT_EQ(GlobalLock(block), GlobalLock(block));
    EXPECT_TRUE(GlobalUnlock(block));
    EXPECT_FALSE(GlobalUnlock(block));
    EXPECT_FALSE(GlobalUnlock(block)); // one time too many
    EXPECT_NE(GlobalLock(block), nullptr);
    EXPECT_FALSE(GlobalUnlock(block));
    GlobalFree(block);
}

TEST(Memory, BlocksHaveExactSizesAndZeroesWhereNothingWasWritten)
{
    HGLOBAL block = GlobalAlloc(zeroed, 0);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(GlobalLock(block), nullptr); // an empty one
    EXPECT_EQ(GlobalSize(block), 0u);
    ASSERT_EQ(GlobalReAlloc(block, 5, zeroed), block);
    EXPECT_TRUE(AreAll(GlobalLock(block), 5, 0));
    GlobalFree(block);

    // A shrunken block forgets what lay past its end.
    size_t kept = 3000001;
    block = GlobalAlloc(zeroed, kept);
    EXPECT_TRUE(AreAll(GlobalLock(block), kept, 0));
    memset(GlobalLock(block), 0x5A, kept);
    GlobalUnlock(block);
    GlobalUnlock(block);
    for (size_t size : {3000001u, 10u, 60u, 200u, 250u, 100000u}) {
        HGLOBAL resized = GlobalReAlloc(block, size, zeroed);
        ASSERT_NE(resized, nullptr);
        block = resized;
        EXPECT_EQ(GlobalSize(block), size);
        kept = kept < size ? kept : size;
        const BYTE *bytes = (const BYTE *)GlobalLock(block);
        EXPECT_TRUE(AreAll(bytes, kept, 0x5A));
        EXPECT_TRUE(AreAll(bytes + kept, size - kept, 0)) << size;
        GlobalUnlock(block);
    }
    GlobalFree(block);
}

TEST(Memory, FailedCallsLeaveBlocksAlone)
{
    HGLOBAL block = nullptr;
    for (const SIZE_T size : {4u, 5000000u}) {
        block = GlobalAlloc(zeroed, size);
        memcpy(GlobalLock(block), "abc", 4);
        GlobalUnlock(block);
        for (const SIZE_T tooMuch : {~(SIZE_T)0 / 2, ~(SIZE_T)0}) {
            EXPECT_EQ(GlobalAlloc(zeroed, tooMuch), nullptr);
            EXPECT_EQ(GlobalReAlloc(block, tooMuch, zeroed), nullptr);
        }
        EXPECT_EQ(GlobalSize(block), size);
        EXPECT_STREQ((const char *)GlobalLock(block), "abc");
        EXPECT_EQ(GlobalFree(block), nullptr); // locked or not
    }
    for (HGLOBAL gone : {block, (HGLOBAL) nullptr}) {
        EXPECT_EQ(GlobalLock(gone), nullptr);
        EXPECT_FALSE(GlobalUnlock(gone));
        EXPECT_EQ(GlobalSize(gone), 0u);
        EXPECT_EQ(GlobalReAlloc(gone, 8, zeroed), nullptr);
        EXPECT_EQ(GlobalFree(gone), gone);
    }
}
