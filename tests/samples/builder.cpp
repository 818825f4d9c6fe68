#include "samples/builder/builder.h"

#include <gtest/gtest.h>

static Bytes CopyAt(const BuiltExecutable &built, size_t offset, size_t size)
{
    auto at = built.bytes.begin() + (ptrdiff_t)offset;
    return Bytes(at, at + (ptrdiff_t)size);
}

static ExecutableDescription SomeResources()
{
    return {.resources = {{2, 7, {1, 2, 3}, 0x409},
                          {"KIND", "LOGO", {4}, 0x409},
                          {2, 7, {5, 6}, 0x407},
                          {2, "LOGO", {}, 0x409},
                          {2, 3, {8, 9}, 0x409}}};
}

// Follows the numbers from the root to each resource's data, as a reader would.
TEST(PeBuilder, NumbersLeadToTheDataAndPlacesTellWhereTheyAre)
{
    for (bool is64 : {false, true}) {
        ExecutableDescription description = SomeResources();
        description.is64 = is64;
        description.sectionsBefore = {{".text", Bytes(5000)}};
        BuiltExecutable built = BuildPe(description);
        const Bytes &bytes = built.bytes;
        EXPECT_EQ(GetU32(bytes, built.header), 0x4550u);
        EXPECT_EQ(GetU32(bytes, built.sectionHeader + 12), built.address);
        EXPECT_EQ(GetU32(bytes, built.sectionHeader + 20), built.table);
        EXPECT_EQ(built.address, 0x4000u - 0x1000u);
        for (size_t i = 0; i < built.resources.size(); i++) {
            const ResourcePlaces &places = built.resources[i];
            const Bytes &data = description.resources[i].data;
            EXPECT_EQ(GetU32(bytes, places.type.entry + 4),
                      0x80000000u | (places.type.directory - built.table));
            EXPECT_EQ(GetU32(bytes, places.entry + 4),
                      0x80000000u | (places.directory - built.table));
            EXPECT_EQ(GetU32(bytes, places.languageEntry), description.resources[i].language);
            EXPECT_EQ(GetU32(bytes, places.languageEntry + 4), places.dataEntry - built.table);
            EXPECT_EQ(GetU32(bytes, places.dataEntry) - built.address + built.table, places.data);
            EXPECT_EQ(GetU32(bytes, places.dataEntry + 4), data.size());
            EXPECT_EQ(CopyAt(built, places.data, data.size()), data);
        }
        const ResourcePlaces &named = built.resources[1];
        EXPECT_EQ(GetU32(bytes, named.entry), 0x80000000u | (named.string - built.table));
        EXPECT_EQ(CopyAt(built, named.string, 10), (Bytes{4, 0, 'L', 0, 'O', 0, 'G', 0, 'O', 0}));
        EXPECT_EQ(GetU32(bytes, named.type.entry), 0x80000000u | (named.type.string - built.table));
    }
}

TEST(PeBuilder, SortsAsLoadersWantOrKeepsTheOrder)
{
    ExecutableDescription description = SomeResources();
    BuiltExecutable sorted = BuildPe(description);
    EXPECT_LT(sorted.resources[1].type.entry, sorted.resources[0].type.entry);
    EXPECT_LT(sorted.resources[3].entry, sorted.resources[4].entry);
    EXPECT_LT(sorted.resources[4].entry, sorted.resources[0].entry);
    EXPECT_LT(sorted.resources[2].languageEntry, sorted.resources[0].languageEntry);
    EXPECT_EQ(GetU16(sorted.bytes, sorted.resources[0].type.directory + 12), 1u);
    EXPECT_EQ(GetU16(sorted.bytes, sorted.resources[0].type.directory + 14), 2u);

    description.keepOrder = true;
    BuiltExecutable kept = BuildPe(description);
    EXPECT_LT(kept.resources[0].entry, kept.resources[4].entry);
    EXPECT_LT(kept.resources[0].languageEntry, kept.resources[2].languageEntry);
}

TEST(NeBuilder, NumbersLeadToTheDataAndPlacesTellWhereTheyAre)
{
    for (unsigned shift : {0u, 4u, 9u}) {
        ExecutableDescription description = SomeResources();
        description.emptyTypes = {6};
        description.alignmentShift = shift;
        BuiltExecutable built = BuildNe(description);
        const Bytes &bytes = built.bytes;
        EXPECT_EQ(GetU16(bytes, built.header), 0x454eu);
        EXPECT_EQ(GetU16(bytes, built.header + 36) + built.header, built.table);
        EXPECT_EQ(GetU16(bytes, built.table), shift);
        for (size_t i = 0; i < built.resources.size(); i++) {
            const ResourcePlaces &places = built.resources[i];
            const Bytes &data = description.resources[i].data;
            EXPECT_EQ((size_t)GetU16(bytes, places.entry) << shift, places.data);
            EXPECT_EQ((GetU16(bytes, places.entry + 2) << shift),
                      (data.size() + (1u << shift) - 1) >> shift << shift);
            EXPECT_EQ(CopyAt(built, places.data, data.size()), data);
        }
        ASSERT_EQ(built.types.size(), 3u);
        EXPECT_EQ(GetU16(bytes, built.types[0].entry) + built.table, built.types[0].string);
        EXPECT_EQ(GetU16(bytes, built.types[1].entry), 0x8002u);
        EXPECT_EQ(GetU16(bytes, built.types[1].entry + 2), 4u);
        EXPECT_EQ(GetU16(bytes, built.types[2].entry), 0x8006u);
        EXPECT_EQ(GetU16(bytes, built.types[2].entry + 8), 0u);
        EXPECT_EQ(CopyAt(built, built.resources[3].string, 5), (Bytes{4, 'L', 'O', 'G', 'O'}));
    }
}
