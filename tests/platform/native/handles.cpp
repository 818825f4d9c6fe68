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
