#include "tests/support/reading.h"

#include <gtest/gtest.h>

TEST(Probe, TellsWhatAFileIs)
{
    Bytes other = BuildPe({.resources = {{2, 1, Text("picture")}}}).bytes;
    other[GetU32(other, 60)] = 'L';
    const Bytes nothingKept =
        BuildPe({.resources = {{16, 1, Text("version")}, {24, 1, Text("manifest")}}}).bytes;
    struct Case {
        const char *name;
        Bytes bytes;
        ProbeOutcome outcome;
        std::vector<UINT> messages;
        const char *reason;
    };
    const char noExecutable[] = "It is not an executable: it does not begin with the letters MZ.";
    const Case cases[] = {
        Case("empty", {}, ProbeNotExecutable, {}, noExecutable),
        Case("one byte", Text("M"), ProbeNotExecutable, {}, noExecutable),
        Case("text", Text("A text file"), ProbeNotExecutable, {}, noExecutable),
        Case("two bytes", Text("MZ"), ProbeNotStandard, {100},
             "The header at offset 60 is neither NE nor PE."),
        Case("another header", other, ProbeNotStandard, {100},
             "The header at offset 128 is neither NE nor PE but LE."),
        Case("no resource", BuildPe({.resources = {}}).bytes, ProbeRead, {112},
             "It holds no resources."),
        Case("nothing kept", nothingKept, ProbeRead, {112},
             "It holds only resources of kinds that are not kept: version, manifest."),
        Case("named types",
             BuildPe({.resources = {{u"TYPELIB", 1, Text("x")},
                                    {std::u16string(60, u'N'), 1, Text("x")},
                                    {240, 1, Text("x")}}})
                 .bytes,
             ProbeRead, {112},
             "It holds only resources of kinds that are not kept: "
             "NNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNN, TYPELIB, type 240."),
        Case("no section",
             BuildPe({.resources = {{2, 1, Text("x")}}, .sectionName = ".data"}).bytes, ProbeFailed,
             {101, 112}, "It has no section named .rsrc; its resources are in the section .data."),
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.name);
        const Reading reading = ReadBytes(row.bytes);
        EXPECT_EQ(reading.outcome, row.outcome);
        EXPECT_EQ(reading.reason, row.reason);
        UINT ids[2];
        const int count = ProbeMessageIds(reading.outcome, (LONG)reading.entries.size(), ids);
        EXPECT_EQ(std::vector<UINT>(ids, ids + count), row.messages);
    }
}
