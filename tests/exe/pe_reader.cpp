#include "exe/tree_items.h"
#include "tests/support/reading.h"
#include "tests/support/temp_folder.h"
#include "tests/support/transcript.h"

#include <gtest/gtest.h>

static BuiltExecutable BuildThree()
{
    return BuildPe(
        {.resources = {{2, 1, Text("picture")}, {3, 5, Text("icon")}, {10, u"DATA", Text("raw")}}});
}

// Reads directories that all have the same subdirectory in each of their entries: counts are those
// of the entries, level by level.
static FailureKind ReadTower(const std::vector<unsigned> &counts)
{
    Bytes section;
    for (const unsigned count : counts) {
        section.resize(section.size() + 12);
        AddU16(section, 0);
        AddU16(section, count);
        const size_t next = section.size() + (size_t)count * 8;
        for (unsigned i = 0; i < count; i++) {
            AddU32(section, 0x70000000 + i);
            AddU32(section, (uint32_t)(0x80000000 | next));
        }
    }
    section.resize(section.size() + 16); // the last level has no entries
    // The section header of the data's own place makes the tower the root.
    BuiltExecutable tower = BuildPe({.resources = {{10, 1, section}}});
    PutU32(tower.bytes, tower.sectionHeader + 20, (uint32_t)tower.resources[0].data);
    return ReadBytes(tower.bytes).failure;
}

TEST(PeReader, FollowsDirectoriesThatAreSharedAndEnds)
{
    using Counts = std::vector<unsigned>;
    EXPECT_EQ(ReadTower({1, 1500}), FailureNone);
    EXPECT_EQ(ReadTower(Counts(8, 1)), FailureNone);
    EXPECT_EQ(ReadTower(Counts(9, 1)), FailureDepth);
    // A walk to the end of this would visit 10^21 directories.
    EXPECT_EQ(ReadTower(Counts(7, 1000)), FailureDirectoryCount);
}

TEST(PeReader, RefusesDataThatAreNamedOverAndOver)
{
    const size_t size = 40u << 20;
    ExecutableDescription description;
    description.resources.push_back({10, 1, Bytes(size)});
    for (int i = 2; i <= 5; i++)
        description.resources.push_back({10, i, Text("small")});
    BuiltExecutable built = BuildPe(description);
    for (const ResourcePlaces &places : built.resources) {
        PutU32(built.bytes, places.dataEntry, GetU32(built.bytes, built.resources[0].dataEntry));
        PutU32(built.bytes, places.dataEntry + 4, (uint32_t)size);
    }
    const Reading reading = ReadBytes(built.bytes);
    EXPECT_EQ(reading.failure, FailureKeptBytes);
    EXPECT_EQ(reading.entries.size(), 2u); // below twice the file
}

TEST(PeReader, ReadsFilesBelowFourGigabytes)
{
    const TempFolder folder;
    const std::string path = folder.Write("large.dll", BuildThree().bytes);
    for (const bool isTooLarge : {false, true}) {
        std::filesystem::resize_file(path, (1ull << 32) - !isTooLarge);
        FILE *file = fopen(path.c_str(), "rb");
        ProbeFile(nullptr, file);
        fclose(file);
        EXPECT_EQ(NotedFailure(), isTooLarge ? FailureTooLarge : FailureNone);
        ReleaseCatalog(&openCatalog);
    }
}

// Whatever a file holds, reading it ends and stays inside it (the sanitizer watches).
TEST(PeReader, SurvivesEveryCutAndEveryWildByte)
{
    ExpectTold(TellDamagedFile(BuildThree().bytes), EXE_FOLDER "/damaged_pe.txt",
               TOLD_FOLDER "/damaged_pe.told.txt");
}
