#include "tests/support/reading.h"
#include "tests/support/transcript.h"

#include <gtest/gtest.h>

using Lines = std::vector<std::string>;

TEST(NeReader, FailsAtTheFirstThingThatIsNotThere)
{
    const BuiltExecutable good =
        BuildNe({.resources = {{2, 1, Text("picture")}, {4, 1, Text("menu")}, {10, 1, Text("raw")}},
                 .keepOrder = true});
    const struct {
        const char *defect;
        size_t offset;
        unsigned value; // 16 bits
        FailureKind failure;
        size_t left;
    } cases[] = {
        {"resource table", good.header + 36, 0xFFFF, FailureTable, 0},
        {"data of a menu, which is not kept", good.resources[1].entry, 0xFFFF, FailureData, 1},
        {"length of a kept resource", good.resources[2].entry + 2, 0xFFFF, FailureData, 1},
        {"resource count", good.resources[2].type.entry + 2, 0xFFFF, FailureData, 2},
        {"alignment shift", good.table, 20, FailureData, 0},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.defect);
        Bytes bytes = good.bytes;
        PutU16(bytes, row.offset, row.value);
        const Reading reading = ReadBytes(bytes);
        EXPECT_EQ(reading.outcome, ProbeFailed);
        EXPECT_EQ(reading.failure, row.failure);
        EXPECT_EQ(reading.entries.size(), row.left);
    }
}

TEST(NeReader, StopsANameAtTheEndOfTheFile)
{
    const BuiltExecutable good =
        BuildNe({.resources = {{2, u"LOGO", Text("picture")}}, .emptyTypes = {6}});
    Bytes bytes = good.bytes;
    // A name string that begins two bytes before the end and says it is 200 long.
    const size_t place = bytes.size() - 2;
    bytes[place] = 200;
    bytes[place + 1] = 'Z';
    PutU16(bytes, good.resources[0].entry + 6, (unsigned)(place - good.table));
    const Reading reading = ReadBytes(bytes);
    EXPECT_EQ(reading.outcome, ProbeRead);
    EXPECT_EQ(reading.entries, Lines{"BITMAP Z 16"});
    // A length byte that lies past the end leaves the resource without a name.
    PutU16(bytes, good.resources[0].entry + 6, (unsigned)(bytes.size() - good.table));
    EXPECT_EQ(ReadBytes(bytes).entries, Lines{});
}

TEST(NeReader, SurvivesEveryCutAndEveryWildByte)
{
    const Bytes good =
        BuildNe({.resources = {{2, 1, Text("picture")}, {3, u"ICON", Text("icon")}}}).bytes;
    ExpectTold(TellDamagedFile(good), EXE_FOLDER "/damaged_ne.txt",
               TOLD_FOLDER "/damaged_ne.told.txt");
}
