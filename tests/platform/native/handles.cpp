#include "platform/native/handles.h"

#include <gtest/gtest.h>

#include <set>

TEST(Handles, DeadHandleNeverMeansALaterObject)
{
    HandleTable<int, HandleKind::Memory> table;
    void *first = table.Add(1);
    EXPECT_TRUE(table.Remove(first));
    EXPECT_FALSE(table.Remove(first));
    std::set<void *> seen = {first};
    for (int i = 0; i < 1000; i++) {
        void *next = table.Add(i);
        EXPECT_TRUE(seen.insert(next).second);
        EXPECT_EQ(table.Find(first), nullptr);
        table.Remove(next);
    }
}

TEST(Handles, HandleOfAnotherTableIsNone)
{
    HandleTable<int, HandleKind::Memory> memory;
    HandleTable<int, HandleKind::Window> windows;
    void *handle = memory.Add(1);
    windows.Add(2);
    EXPECT_EQ(windows.Find(handle), nullptr);
    for (const intptr_t number : {0, 1, 6030, -1, -3, -0x10000})
        EXPECT_EQ(memory.Find(reinterpret_cast<void *>(number)), nullptr);
}
