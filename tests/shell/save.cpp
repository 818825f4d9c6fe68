// The save command, through the window.
#include "shell/save.h"

#include "program/globals.h"
#include "program/ids.h"
#include "samples/builder/builder.h"
#include "shell/main_window.h"
#include "tests/support/drive.h"
#include "tests/support/temp_folder.h"

typedef std::vector<std::string> Texts;

struct Save : ProgramTest {
    void SetUp() override
    {
        ProgramTest::SetUp();
        const std::string path = TestFile("every.dll", EveryKind());
        SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0, (LPARAM)path.c_str());
    }
};

// The block's handle is dead: the data cannot be had.
TEST_F(Save, AFileThatWasCreatedAndNotFilledIsGone)
{
    const struct {
        const char *category, *item;
        LONG index;
        bool isCreated;
    } cases[] = {{"BITMAP", "101", 0, true},
                 {"ICON", "1", 1, true},
                 {"STRING TABLE", "7", 3, false}, // asks for its data first
                 {"BINARY DATA", "501", 5, true}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.item);
        ResourceCatalog broken = {};
        ResourceEntry entry;
        ASSERT_EQ(GetEntry(openCatalog.entries, &entry, c.index), 1);
        entry.data = GlobalAlloc(GMEM_MOVEABLE, 1);
        ASSERT_EQ(AppendEntry(&broken, &entry), 1);
        GlobalFree(entry.data);
        const std::string path = TestFile("target", {9});
        ChooseNext(path);
        PressNext(IDYES);
        PressNext(IDOK);
        EXPECT_EQ(SaveResource(globals.mainWindow, &broken, 0), 0);
        EXPECT_EQ(TakeShown().back(), "There has been an error allocating memory.");
        EXPECT_EQ(std::filesystem::exists(path), !c.isCreated);
        broken.count = 0; // what is behind the last one is nothing
        EXPECT_EQ(SaveResource(globals.mainWindow, &broken, 0), 0);
        EXPECT_EQ(TakeShown(), Texts());
        EXPECT_EQ(GetEntry(nullptr, &entry, 0), 0);
        GlobalFree(broken.entries);
    }
}

TEST_F(Save, AWriteThatFailsIsReportedAndLeavesNoFile)
{
    const std::string path = TestFolder() + "full";
    for (const char *item : {"BITMAP 101", "ICON 1", "BINARY DATA 500", "STRING TABLE 7"}) {
        SCOPED_TRACE(item);
        const std::string label(item);
        const bool isReported = label != "STRING TABLE 7"; // its lines are not watched
        Select(label.substr(0, label.rfind(' ')), label.substr(label.rfind(' ') + 1));
        TakeShown();
        if (!LimitFileSize(8))
            GTEST_SKIP();
        ChooseNext(path);
        if (isReported)
            PressNext(IDOK);
        Command(IDM_SAVE_AS);
        LimitFileSize(-1);
        const Texts shown = TakeShown();
        EXPECT_EQ(shown.back() == "There has been an error writing this file.", isReported);
        EXPECT_NE(std::filesystem::exists(path), isReported);
    }
}

TEST_F(Save, ANameTooLongForTheChooserKeepsItsExtension)
{
    const std::u16string name(300, u'N');
    const std::string path = TestFile("long.dll", BuildPe({.resources = {{10, name, {1}}}}).bytes);
    SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0, (LPARAM) "");
    Command(IDM_CLOSE);
    SendMessageA(globals.mainWindow, WM_OPEN_FILE, 0, (LPARAM)path.c_str());
    Select("BINARY DATA", "NNN");
    CancelNext();
    Command(IDM_SAVE_AS);
    EXPECT_EQ(TakeShown(), Texts({"chooser: " + std::string(255, 'N') + ".BIN"}));
}
