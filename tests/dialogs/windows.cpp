// The dialogs and what the program launches and looks for.
#include "dialogs/about.h"
#include "dialogs/manual.h"
#include "dialogs/message.h"
#include "shell/folders.h"

#include "platform/files.h"
#include "program/globals.h"
#include "program/ids.h"
#include "tests/support/drive.h"

#include <cstring>

typedef std::vector<std::string> Texts;

struct Dialogs : ProgramTest {
};

TEST_F(Dialogs, TheMessageDialogShowsItsTextAndAnswersTheButton)
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

TEST_F(Dialogs, TheAboutBoxTellsTheVersionAndClosesByOkAlone)
{
    PressNext(IDCANCEL);
    PressNext(IDC_ABOUT_PICTURE);
    PressNext(IDOK);
    EXPECT_EQ(ShowAboutBox(globals.mainWindow), IDOK);
    const Texts shown = TakeShown();
    ASSERT_EQ(shown.size(), 3u);
    const std::string version = "Quillmoor version 3.0a\n";
    EXPECT_EQ(shown[0].compare(0, version.size(), version), 0) << shown[0];
    EXPECT_EQ(shown[0].find('%'), std::string::npos);
}

TEST_F(Dialogs, TheManualIsBesideTheProgram)
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
    EXPECT_STREQ(EscapeSpaces("a b\\c  #\xE4"), "a%20b\\c%20%20#\xE4");
    EXPECT_STREQ(EscapeSpaces(""), "");
    EXPECT_EQ(strlen(EscapeSpaces(std::string(173, ' ').c_str())), 519u);
    EXPECT_STREQ(EscapeSpaces(std::string(174, ' ').c_str()), "");
    EXPECT_EQ(strlen(EscapeSpaces(std::string(520, 'x').c_str())), 520u);
}

TEST_F(Dialogs, AManualThatHasNoAddressIsReported)
{
    PressNext(IDOK);
    EXPECT_EQ(OpenInBrowser(globals.mainWindow, std::string(600, 'x').c_str(), "#QUILM"), 1);
    PressNext(IDOK);
    EXPECT_EQ(OpenInBrowser(globals.mainWindow, "", "#QUILM"), 1);
    const std::string failure =
        " There has been an error displaying the manual page. Please ensure that there is an "
        "application installed on your system capable of opening HTML documents associated with "
        "the file extension .HTM.";
    EXPECT_EQ(TakeShown(), Texts({failure, failure}));
}

TEST(Folders, TheSettingsLieInTheUsersFolderAndAreNotCut)
{
    const std::string separator(1, pathSeparator);
    const std::string path = UserSettingsPath("VLXPRO30.INI");
    const std::string end = separator + "Orrindale" + separator + "VLXPRO30.INI";
    ASSERT_GT(path.size(), end.size());
    EXPECT_EQ(path.substr(path.size() - end.size()), end);
    EXPECT_STREQ(UserSettingsPath(std::string(250, 'n').c_str()), "");
}
