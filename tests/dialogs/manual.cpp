#include "dialogs/manual.h"

#include "platform/files.h"
#include "program/globals.h"
#include "tests/support/drive.h"

#include <cstring>

struct Manual : ProgramTest {
};

TEST_F(Manual, IsBesideTheProgram)
{
    const std::string separator(1, pathSeparator);
    const struct {
        std::string directory, path;
    } cases[] = {
        {"", "x.htm"},
        {"dir", "dir" + separator + "x.htm"},
        {"dir" + separator, "dir" + separator + "x.htm"},
        {std::string(254, 'd'), std::string(254, 'd') + separator + "x.htm"},
        {std::string(255, 'd'), ""}, // cut, it would be another file
    };
    for (const auto &c : cases) {
        strcpy(globals.programDirectory, c.directory.c_str());
        EXPECT_EQ(std::string(ProgramFilePath("x.htm")), c.path);
    }
    EXPECT_EQ(EscapeSpaces("a b\\c  #\xE4"), "a%20b\\c%20%20#\xE4");
    std::string spaces;
    for (int i = 0; i < 259; i++)
        spaces += "%20";
    EXPECT_EQ(DocumentAddress(std::string(259, ' ').c_str(), "#a b"),
              "file:///" + spaces + "#a%20b");
}

TEST_F(Manual, WithoutAPathIsReported)
{
    globals.programDirectory[0] = 0; // it did not fit
    PressNext(IDOK);
    EXPECT_EQ(ShowManualTopic(globals.mainWindow, "QUILM"), 1);
    EXPECT_TRUE(
        TakeShown().at(0).starts_with(" There has been an error displaying the manual page."));
}
