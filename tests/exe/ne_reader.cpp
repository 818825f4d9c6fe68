#include "tests/support/reading.h"
#include "tests/support/transcript.h"

#include <gtest/gtest.h>

using Lines = std::vector<std::string>;

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
    const Bytes good = BuildNe({.resources = {{2, 1, Text("picture")},
                                              {3, u"ICON", Text("icon")},
                                              {4, 1, Text("menu")},
                                              {10, 1, Text("r")}},
                                .keepOrder = true,
                                .alignmentShift = 0})
                           .bytes;
    ExpectTold(TellDamagedFile(good), EXE_FOLDER "/damaged_ne.txt",
               TOLD_FOLDER "/damaged_ne.told.txt");
}
