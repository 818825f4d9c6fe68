#include "tests/support/reading.h"
#include "tests/support/transcript.h"

#include <gtest/gtest.h>

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
