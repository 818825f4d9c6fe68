#include "shell/start.h"

#include "program/globals.h"
#include "samples/builder/builder.h"
#include "tests/support/drive.h"

typedef std::vector<std::string> Texts;

TEST(Start, OpensTheFileOfTheCommandLine)
{
    const std::string path = TestFile("every file.dll", EveryKind());
    StartProgram(path);
    EXPECT_EQ(TitleText(), "Quillmoor [ " + path + " ] ");
    StopProgram();
}

TEST(Start, EndsWhenTheHostModuleIsMissing)
{
    const char missing[] = "The Vellumax Professional executable file VLXPRO.EXE cannot be found.";
    // The posted Exit command takes the second box away, answered or not.
    PressNext(IDOK);
    EXPECT_EQ(StartProgram("", TestFolder()), 0);
    EXPECT_EQ(TakeShown(), Texts({missing}));
    EXPECT_FALSE(IsAlive(globals.mainWindow));
    StopProgram();
}
