// Modal dialogs from templates, and the message box.
#include "program/ids.h"
#include "samples/builder/builder.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"

namespace
{

std::function<void(HWND, LPARAM)> onInit;
std::function<void(HWND)> onUser;
INT_PTR initAnswer, colorAnswer;

INT_PTR CALLBACK TestProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG:
        if (onInit)
            onInit(dialog, lParam);
        else
            PostMessageA(dialog, WM_USER, 0, 0);
        return initAnswer;
    case WM_USER:
        if (onUser)
            onUser(dialog);
        return TRUE;
    case WM_COMMAND:
        told.push_back("command " + std::to_string(wParam));
        if (wParam == IDOK)
            EndDialog(dialog, 17);
        return TRUE;
    case WM_DESTROY: told.push_back("destroy"); return FALSE;
    case WM_KEYDOWN: told.push_back("key"); return FALSE;
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC: return colorAnswer;
    default: return FALSE;
    }
}

struct DialogTest : MessageTest {
    HWND owner = CreateWindowExA(0, "static", "owner", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200,
                                 nullptr, nullptr, instance, nullptr);

    DialogTest()
    {
        onInit = nullptr;
        onUser = nullptr;
        initAnswer = TRUE;
        colorAnswer = 0;
    }

    ~DialogTest() override
    {
        DestroyWindow(owner);
    }

    INT_PTR Show(LPARAM parameter = 0)
    {
        return DialogBoxParamA(instance, "aboutbox", owner, TestProcedure, parameter);
    }
};

TEST_F(DialogTest, RunsUntilItEndsItselfAndDisablesItsOwnerMeanwhile)
{
    LPARAM given = 0;
    onInit = [&](HWND dialog, LPARAM parameter) {
        given = parameter;
        PostMessageA(dialog, WM_USER, 0, 0);
    };
    onUser = [&](HWND dialog) {
        EXPECT_EQ(DialogAbove(owner), dialog);
        EXPECT_EQ(SetFocus(owner), nullptr);
        colorAnswer = (INT_PTR)GetStockObject(WHITE_BRUSH);
        for (const UINT color : {WM_CTLCOLORBTN, WM_CTLCOLORDLG, WM_CTLCOLORSTATIC})
            EXPECT_EQ(SendMessageA(dialog, color, 0, 0), colorAnswer);
        EXPECT_EQ(SendMessageA(dialog, WM_COMMAND, 54, 0), 0); // taken, by whatever answer
        PostMessageA(dialog, WM_COMMAND, 55, 0);
        PostMessageA(dialog, WM_COMMAND, IDOK, 0);
    };
    EXPECT_EQ(Show(4711), 17);
    EXPECT_EQ(told, (Lines{"command 54", "command 55", "command 1", "destroy"}));
    EXPECT_EQ(given, 4711);
    EXPECT_EQ(DialogAbove(owner), nullptr);
    SetFocus(owner);
    EXPECT_EQ(SetFocus(owner), owner);
}

TEST_F(DialogTest, EscapeAndTheCloseBoxGiveTheCancelCommandAndKeysTheFocusedButtons)
{
    for (WPARAM key : {VK_RETURN, VK_SPACE}) {
        onUser = [key](HWND dialog) {
            HWND ok = GetDlgItem(dialog, IDOK);
            SetFocus(ok);
            PostMessageA(dialog, WM_KEYDOWN, VK_ESCAPE, 0);
            EXPECT_EQ(SendMessageA(dialog, WM_CLOSE, 0, 0), 0);
            PostMessageA(ok, WM_KEYDOWN, key, 0);
            PostMessageA(ok, WM_KEYDOWN + 1, key, 0); // on Windows the space bar's release counts
        };
        told.clear();
        EXPECT_EQ(Show(), 17);
        EXPECT_EQ(told, (Lines{"command 2", "command 2", "command 1", "destroy"})) << key;
    }
}

TEST_F(DialogTest, AQuitRequestEndsItAndReachesTheOuterLoop)
{
    onUser = [](HWND) { PostQuitMessage(5); };
    Show();
    EXPECT_EQ(told, Lines{"destroy"});
    MSG message;
    EXPECT_FALSE(GetMessageA(&message, nullptr, 0, 0));
    EXPECT_EQ(message.wParam, 5u);
}

TEST_F(DialogTest, EndsWhileItBeginsOrWhenItOrItsOwnerIsDestroyed)
{
    onInit = [this](HWND dialog, LPARAM) {
        EXPECT_EQ(SetFocus(owner), nullptr);
        EXPECT_TRUE(EndDialog(dialog, 5));
        EXPECT_TRUE(EndDialog(dialog, 6));
        PostMessageA(dialog, WM_COMMAND, 55, 0);
    };
    EXPECT_EQ(Show(), 6);
    EXPECT_EQ(told, Lines{"destroy"});
    // Destroyed, it ends without a result.
    onInit = nullptr;
    onUser = [](HWND dialog) { DestroyWindow(dialog); };
    EXPECT_EQ(Show(), 0);
    // So it does with its owner.
    onUser = [this](HWND) { DestroyWindow(owner); };
    EXPECT_NE(Show(), 17);
    EXPECT_EQ(told, (Lines{"destroy", "destroy", "destroy"}));
}

TEST_F(DialogTest, BeginsWithTheKeyboardAtItsFirstStopUnlessTheProcedureGaveItAndSaysSo)
{
    const struct {
        bool gives;
        INT_PTR answer;
        int expected;
    } cases[] = {{false, FALSE, IDOK}, {true, FALSE, IDC_ABOUT_PICTURE}, {true, TRUE, IDOK}};
    for (const auto &[gives, answer, expected] : cases) {
        initAnswer = answer;
        onInit = [gives](HWND dialog, LPARAM) {
            if (gives)
                SetFocus(GetDlgItem(dialog, IDC_ABOUT_PICTURE));
            PostMessageA(dialog, WM_USER, 0, 0);
        };
        onUser = [expected](HWND dialog) {
            EXPECT_EQ(SetFocus(dialog), GetDlgItem(dialog, expected)) << expected;
            EndDialog(dialog, 0);
        };
        Show();
    }
}

TEST_F(DialogTest, IsNotShownWithoutATemplate)
{
    EXPECT_EQ(DialogBoxParamA(instance, "no such dialog", owner, TestProcedure, 0), -1);
    HWND dead =
        CreateWindowExA(0, "static", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, instance, nullptr);
    DestroyWindow(dead);
    EXPECT_EQ(DialogBoxParamA(instance, "aboutbox", dead, TestProcedure, 0), 0);
    EXPECT_NE(MessageBoxA(dead, "A text", "Message", MB_ICONINFORMATION), IDOK);
    EXPECT_FALSE(EndDialog(dead, 1));
    EXPECT_TRUE(told.empty());

    // Nor when a control is of no class, "Q".
    const Bytes wrong = {
        0, 0, 0xC0, 0x80, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 60, 0, 40, 0, 0,    0, 0, 0, 0,
        0, // a caption, and one control at (1, 1)
        0, 0, 0,    0x50, 0, 0, 0, 0, 1, 0, 1, 0, 9, 0, 9,  0, 1,  0, 0x51, 0, 0, 0, 0, 0, 0, 0};
    const ExecutableDescription description = {.resources = {{5, 1, wrong, 0}}, .is64 = true};
    const TempFolder folder;
    HMODULE module = LoadLibraryA(folder.Write("dialogs.exe", BuildPe(description).bytes).c_str());
    EXPECT_EQ(DialogBoxParamA(module, MAKEINTRESOURCEA(1), owner, TestProcedure, 0), -1);
    EXPECT_TRUE(FreeLibrary(module));
}

TEST_F(DialogTest, AMessageBoxIsAnsweredAndGoesWithItsOwner)
{
    HWND boxOwner = Make("owner", nullptr, WS_POPUP | WS_VISIBLE);
    int answer = 0;
    actions[WM_USER] = [&](HWND window, WPARAM, LPARAM) -> LRESULT {
        EXPECT_NE(DialogAbove(window), nullptr);
        PostMessageA(DialogAbove(window), WM_COMMAND, 55, 0);
        return PostMessageA(DialogAbove(window), WM_COMMAND, (WPARAM)answer, 0);
    };
    for (const int given : {IDOK, IDCANCEL}) {
        answer = given;
        PostMessageA(boxOwner, WM_USER, 0, 0);
        const int got = MessageBoxA(boxOwner, "A text & more", "Message", MB_ICONINFORMATION);
        EXPECT_TRUE(got == IDOK || (got == IDCANCEL && given == IDCANCEL)) << got; // both are used
    }
    actions[WM_USER] = [](HWND window, WPARAM, LPARAM) -> LRESULT { return DestroyWindow(window); };
    PostMessageA(boxOwner, WM_USER, 0, 0);
    MessageBoxA(boxOwner, "A text", "Message", MB_ICONINFORMATION);
    RECT rect;
    EXPECT_FALSE(GetClientRect(boxOwner, &rect));
}

} // namespace
