#include "tests/support/drive.h"

#include "program/globals.h"
#include "program/ids.h"
#include "samples/builder/builder.h"
#include "tests/support/loops.h"
#include "tests/support/temp_folder.h"

#include <deque>
#include <memory>
#include <utility>

std::vector<std::string> allShown;
static std::deque<Answer> answers;

void PressNext(int button)
{
    answers.push_back({(UINT)button, ""});
}

void ChooseNext(const std::string &path)
{
    answers.push_back({IDOK, path});
}

void CancelNext()
{
    answers.push_back({IDCANCEL, ""});
}

std::vector<std::string> TakeShown()
{
    return std::exchange(allShown, {});
}

Answer NextAnswer(const std::string &what, UINT otherwise)
{
    if (answers.empty()) {
        ADD_FAILURE() << "no answer for the dialog that says " << what;
        return {otherwise, ""};
    }
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

std::string TextStyle(const std::string &face, int height, COLORREF color, bool isTransparent)
{
    char number[16];
    snprintf(number, sizeof number, "%06X", (unsigned)color);
    const bool isShadow = color == GetSysColor(COLOR_BTNSHADOW); // the desktop's, on Windows
    return face + " " + std::to_string(height) + ", " + (isShadow ? "shadow" : number) +
           (isTransparent ? "" : ", opaque");
}

void ExpectAllAnswered()
{
    EXPECT_TRUE(answers.empty()) << answers.size() << " dialogs were not shown";
    answers.clear();
    allShown.clear();
}

HWND Tree()
{
    return GetDlgItem(globals.mainWindow, IDC_TREE);
}

HWND Pane()
{
    return GetDlgItem(globals.mainWindow, IDC_PANE);
}

std::string TitleText()
{
    return TextOf(globals.mainWindow);
}

bool IsGray(UINT command)
{
    return GetMenuState(GetMenu(globals.mainWindow), command, MF_BYCOMMAND) & MF_GRAYED;
}

int Command(UINT id)
{
    SendMessageA(globals.mainWindow, WM_COMMAND, id, 0);
    return RunUntilIdle();
}

static HTREEITEM NextItem(WPARAM relation, HTREEITEM item)
{
    return (HTREEITEM)SendMessageA(Tree(), TVM_GETNEXTITEM, relation, (LPARAM)item);
}

static std::string LabelOf(HTREEITEM item)
{
    char text[400] = "";
    TVITEMA request = {};
    request.mask = TVIF_TEXT;
    request.hItem = item;
    request.pszText = text;
    request.cchTextMax = sizeof text;
    SendMessageA(Tree(), TVM_GETITEMA, 0, (LPARAM)&request);
    return request.pszText;
}

std::vector<std::string> TreeLabels()
{
    std::vector<std::string> labels;
    for (HTREEITEM category = NextItem(TVGN_ROOT, nullptr); category != nullptr;
         category = NextItem(TVGN_NEXT, category)) {
        labels.push_back(LabelOf(category));
        for (HTREEITEM item = NextItem(TVGN_CHILD, category); item != nullptr;
             item = NextItem(TVGN_NEXT, item))
            labels.push_back("  " + LabelOf(item));
    }
    return labels;
}

void Select(const std::string &category, const std::string &begin)
{
    HTREEITEM item = NextItem(TVGN_ROOT, nullptr);
    while (item != nullptr && LabelOf(item) != category)
        item = NextItem(TVGN_NEXT, item);
    if (!begin.empty()) {
        item = NextItem(TVGN_CHILD, item);
        while (item != nullptr && LabelOf(item).compare(0, begin.size(), begin) != 0)
            item = NextItem(TVGN_NEXT, item);
    }
    ASSERT_NE(item, nullptr) << category << " " << begin;
    SelectItem(Tree(), item);
    RunUntilIdle();
}

Bytes ShortSound()
{
    WaveDescription sound;
    sound.samples = Bytes(20, 7);
    return MakeWave(sound);
}

Bytes EveryKind()
{
    Picture picture = MakePicture(20, 10, 0xFFFF0000);
    return BuildPe({.resources = {{2, 101, MakeDib(picture, 24)},
                                  {3, 1, MakeIconImage(MakePicture(32, 32, 0xFF0000FF), 4)},
                                  {3, 2, MakePng(picture)},
                                  {6, 7, MakeStringBlock({u"", u"One", u"Two\tlines\r\n"})},
                                  {10, 500, ShortSound()},
                                  {10, 501, {1, 2, 3, 'A', 'z'}},
                                  {16, 1, {1}}}})
        .bytes;
}

static std::string NameOfTest()
{
    const testing::TestInfo *test = testing::UnitTest::GetInstance()->current_test_info();
    return std::string(test->test_suite_name()) + "." + test->name();
}

std::string TestFolder()
{
    static std::string test;
    static std::unique_ptr<TempFolder> own;
    if (std::exchange(test, NameOfTest()) != NameOfTest())
        own = std::make_unique<TempFolder>();
    return (own->path / "").string();
}

std::string TestFile(const std::string &name, const Bytes &bytes)
{
    const std::string path = TestFolder() + name;
    EXPECT_TRUE(WriteBytes(path.c_str(), bytes));
    return path;
}
