#include "exe/catalog.h"

#include "content/block.h"

#include <gtest/gtest.h>

TEST(Catalog, GrowsByAppendingAndIsEmptyAfterRelease)
{
    ResourceCatalog catalog = {};
    ResourceEntry entry = {};
    ResourceEntry read;
    EXPECT_EQ(GetEntry(catalog.entries, &read, 0), 0);
    for (DWORD i = 0; i < 3; i++) {
        entry.size = i;
        ASSERT_NE(AllocateLocked(i, &entry.data), nullptr);
        GlobalUnlock(entry.data);
        ASSERT_EQ(AppendEntry(&catalog, &entry), 1);
    }
    EXPECT_EQ(catalog.count, 3);
    EXPECT_GE(GlobalSize(catalog.entries), 3 * sizeof(ResourceEntry));
    ASSERT_EQ(GetEntry(catalog.entries, &read, 2), 1);
    EXPECT_EQ(read.size, 2u);
    const HGLOBAL data = read.data;
    EXPECT_NE(GlobalLock(data), nullptr);
    GlobalUnlock(data);
    ReleaseCatalog(&catalog);
    EXPECT_EQ(catalog.entries, nullptr);
    EXPECT_EQ(catalog.count, 0);
    EXPECT_EQ(GlobalLock(data), nullptr);
    ReleaseCatalog(&catalog);
}
