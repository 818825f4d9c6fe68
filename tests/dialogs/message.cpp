#include "dialogs/message.h"

#include "program/globals.h"
#include "tests/support/drive.h"

typedef std::vector<std::string> Texts;

struct MessageDialog : ProgramTest {
};

TEST_F(MessageDialog, ShowsItsTextAndAnswersTheButtonsClick)
{
    PressNext(IDOK);
    EXPECT_EQ(ShowMessage(globals.mainWindow, "Ampersand & tab\tline\nend"), IDOK);
    PressNext(IDCANCEL);
    EXPECT_EQ(ShowMessage(globals.mainWindow, "Closed by Escape"), IDCANCEL);
    // Only a click closes it: not another command, not another notification of the button.
    PressNext(3);
    PressNext((int)MAKEWPARAM(IDOK, 6));
    PressNext(IDOK);
    EXPECT_EQ(ShowMessage(globals.mainWindow, "Third"), IDOK);
    EXPECT_EQ(TakeShown(),
              Texts({"Ampersand & tab\tline\nend", "Closed by Escape", "Third", "Third", "Third"}));
    HMODULE host = globals.hostModule;
    globals.hostModule = nullptr;
    EXPECT_LE(ShowMessage(globals.mainWindow, "Not shown"), 0);
    globals.hostModule = host;
}
