#include "dialogs/about.h"

#include "program/globals.h"
#include "program/ids.h"
#include "tests/support/drive.h"

struct AboutBox : ProgramTest {
};

TEST_F(AboutBox, TellsTheVersionAndClosesByOkAlone)
{
    PressNext(IDCANCEL);
    PressNext(IDC_ABOUT_PICTURE);
    PressNext(IDOK);
    EXPECT_EQ(ShowAboutBox(globals.mainWindow), IDOK);
    const std::vector<std::string> shown = TakeShown();
    ASSERT_EQ(shown.size(), 3u);
    const std::string version = "Quillmoor version 3.0a\n";
    EXPECT_EQ(shown[0].compare(0, version.size(), version), 0) << shown[0];
    EXPECT_EQ(shown[0].find('%'), std::string::npos);
}
