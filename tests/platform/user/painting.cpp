// What windows and controls show, by the pixels of real windows.
#include "samples/builder/builder.h"
#include "tests/support/drive.h"

#include "tests/support/canvas.h"
#include "tests/support/recorder.h"

#include <algorithm>

namespace
{

const uint32_t yellow = 0xFFFF00;

struct PaintingTest : testing::Test {
    HBRUSH brush = CreateSolidBrush(RGB(255, 255, 0));
    HWND window = nullptr;

    PaintingTest()
    {
        StartProgram();
        WNDCLASSA windowClass = {};
        windowClass.lpfnWndProc = RecordingProcedure;
        windowClass.hbrBackground = brush;
        windowClass.lpszClassName = "PaintingTest";
        RegisterClassA(&windowClass);
        window = CreateWindowExA(0, "PaintingTest", "", WS_POPUP | WS_VISIBLE, 50, 60, 200, 100,
                                 nullptr, nullptr, nullptr, nullptr);
        UpdateWindow(window);
    }

    ~PaintingTest() override
    {
        actions.clear();
        DestroyWindow(window);
        EXPECT_TRUE(UnregisterClassA("PaintingTest", nullptr));
        DeleteObject(brush);
        StopProgram();
    }

    HWND MakeButton(int id, DWORD style = 0)
    {
        return CreateWindowExA(0, "button", "", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW | style, 10,
                               10, 40, 30, window, (HMENU)(INT_PTR)id, nullptr, nullptr);
    }

    void Fill(const RECT &part, COLORREF color)
    {
        HDC dc = GetDC(window);
        HBRUSH filling = CreateSolidBrush(color);
        FillRect(dc, &part, filling);
        DeleteObject(filling);
        EXPECT_EQ(ReleaseDC(window, dc), 1);
    }
};

TEST_F(PaintingTest, ErasesWhatIsInvalidAndNothingElse)
{
    const RECT all = {0, 0, 200, 100};
    EXPECT_EQ(PixelsOf(window).At(100, 50), yellow);
    const struct {
        RECT part;
        BOOL erase;
        bool isErased;
    } cases[] = {{{90, 40, 110, 60}, TRUE, true},
                 {{90, 40, 110, 60}, FALSE, false},
                 {{90, 40, 110, 40}, TRUE, false},
                 {{-50, -50, 500, 51}, TRUE, true},
                 {{200, 0, 300, 100}, TRUE, false}};
    for (const auto &row : cases) {
        Fill(all, RGB(0, 0, 255));
        EXPECT_TRUE(InvalidateRect(window, &row.part, row.erase));
        EXPECT_EQ(PixelsOf(window).At(100, 50), 0x0000FFu);
        EXPECT_TRUE(UpdateWindow(window));
        EXPECT_EQ(PixelsOf(window).At(100, 50), row.isErased ? yellow : 0x0000FFu)
            << row.part.left << " " << row.erase;
        EXPECT_EQ(PixelsOf(window).At(100, 90), 0x0000FFu);
    }
    // Two parts are erased together, also where only the first was to be.
    const RECT one = {0, 0, 10, 10}, other = {90, 40, 110, 60};
    InvalidateRect(window, &one, TRUE);
    InvalidateRect(window, &other, FALSE);
    UpdateWindow(window);
    EXPECT_EQ(PixelsOf(window).At(5, 5), yellow);
    EXPECT_EQ(PixelsOf(window).At(100, 50), yellow);
}

TEST_F(PaintingTest, AWindowMayGoWhileItIsPainted)
{
    for (UINT message : {WM_CTLCOLORBTN, WM_DRAWITEM, WM_ERASEBKGND}) {
        HWND button = MakeButton(7);
        actions[message] = [&](HWND, WPARAM wParam, LPARAM lParam) -> LRESULT {
            const HDC dc =
                message == WM_DRAWITEM ? ((const DRAWITEMSTRUCT *)lParam)->hDC : (HDC)wParam;
            DestroyWindow(message == WM_ERASEBKGND ? window : button);
            const RECT all = {0, 0, 40, 30};
            FillRect(dc, &all, brush);
            return TRUE;
        };
        InvalidateRect(window, nullptr, TRUE);
        UpdateWindow(window);
        UpdateWindow(button);
        EXPECT_FALSE(IsAlive(button)) << message;
        actions.clear();
    }
    EXPECT_FALSE(IsAlive(window));
}

TEST_F(PaintingTest, AContextOutlivesItsWindowAndItsSize)
{
    HWND button = MakeButton(7);
    const RECT all = {0, 0, 400, 300};
    HDC dc = GetDC(button), above = GetDC(window);
    MoveWindow(button, 0, 0, 300, 200, TRUE);
    MoveWindow(window, 0, 0, 20, 20, TRUE);
    UpdateWindow(window);
    UpdateWindow(button);
    FillRect(dc, &all, brush);
    FillRect(above, &all, brush);
    ReleaseDC(button, dc);
    dc = GetDC(button);
    DestroyWindow(window);
    FillRect(dc, &all, brush);
    FillRect(above, &all, brush);
    ReleaseDC(button, dc);
    ReleaseDC(window, above);
}

TEST_F(PaintingTest, AnOwnerDrawnButtonTellsItsState)
{
    HWND button = MakeButton(7), off = MakeButton(8, WS_DISABLED);
    std::map<UINT, UINT> states;
    actions[WM_DRAWITEM] = [&](HWND, WPARAM id, LPARAM lParam) -> LRESULT {
        const auto *item = (const DRAWITEMSTRUCT *)lParam;
        states[(UINT)id] = item->itemState & (ODS_SELECTED | ODS_DISABLED | ODS_FOCUS);
        EXPECT_EQ(item->hwndItem, id == 7 ? button : off);
        return TRUE;
    };
    const auto stateOf = [&](HWND control, UINT id) {
        states[id] = 99;
        InvalidateRect(control, nullptr, FALSE);
        UpdateWindow(control);
        return states[id];
    };
    EXPECT_EQ(stateOf(button, 7), 0u);
    EXPECT_EQ(stateOf(off, 8), (UINT)ODS_DISABLED);
    SendMessageA(button, WM_LBUTTONDOWN, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(stateOf(button, 7), (UINT)(ODS_SELECTED | ODS_FOCUS));
    SendMessageA(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(stateOf(button, 7), (UINT)ODS_FOCUS);
    SetFocus(window);
    EXPECT_EQ(stateOf(button, 7), 0u);
}

TEST_F(PaintingTest, AnOwnerDrawnButtonBeginsInTheColourThatItsParentGives)
{
    HWND plain = MakeButton(7);
    UpdateWindow(plain);
    const uint32_t green = 0x00FF00; // the same place in a pixel and in a COLORREF
    EXPECT_EQ(PixelsOf(plain).At(5, 5) & green, GetSysColor(COLOR_BTNFACE) & green);
    actions[WM_CTLCOLORBTN] = [&](HWND, WPARAM, LPARAM) { return (LRESULT)brush; };
    HWND colored = MakeButton(8);
    UpdateWindow(colored);
    EXPECT_EQ(PixelsOf(colored).At(5, 5), yellow);
}

// --- static controls ---

const DWORD centered = 1, rightAligned = 2, asIcon = 3, noPrefix = 0x80; // SS_

struct StaticTest : PaintingTest {
    // The rectangle around a text's letters in a control of 180 x 80 pixels.
    RECT Letters(const char *text, DWORD style = 0)
    {
        actions[WM_CTLCOLORSTATIC] = [](HWND, WPARAM dc, LPARAM) -> LRESULT {
            SetTextColor((HDC)dc, RGB(0, 0, 0));
            SetBkColor((HDC)dc, RGB(255, 255, 255));
            return (LRESULT)GetStockObject(WHITE_BRUSH);
        };
        HWND control = CreateWindowExA(0, "static", text, WS_CHILD | WS_VISIBLE | style, 0, 0, 180,
                                       80, window, (HMENU)9, nullptr, nullptr);
        UpdateWindow(control);
        const Pixels pixels = PixelsOf(control);
        DestroyWindow(control);
        return RectAround(180, 80, [&](int x, int y) { return (pixels.At(x, y) & 0xFF) < 0x80; });
    }
};

TEST_F(StaticTest, TextIsLaidOutAsItsCharactersSay)
{
    const RECT one = Letters("I"), two = Letters("I\nI");
    EXPECT_EQ(Letters("").right, 0);
    // "&" marks the next letter, unless there is none or the style says that it does not.
    EXPECT_NEAR(Letters("A&I").right, Letters("AI").right, 1); // there may be a line below the I
    EXPECT_GT(Letters("A&&I").right, Letters("A&I").right + 3);
    EXPECT_EQ(Letters("A&I", noPrefix).right, Letters("A&&I").right);
    EXPECT_EQ(Letters("A&").right, Letters("A&", noPrefix).right);
    EXPECT_EQ(Letters("A& I").right, Letters("A I").right);
    // Tabs reach the next stop.
    EXPECT_GT(Letters("\tI").left, one.left + 30);
    EXPECT_EQ(Letters("A\tI").right, Letters("\tI").right);
    // One line end after another, however it is written.
    const LONG line = two.bottom - one.bottom;
    EXPECT_GT(line, 8);
    for (const char *text : {"I\r\nI", "I\rI", "I\n\rI"})
        EXPECT_EQ(Letters(text).bottom, two.bottom);
    EXPECT_EQ(Letters("I\n\nI").bottom, two.bottom + line);
    EXPECT_EQ(Letters("\nI").top, one.top + line);
    // Words that do not fit go to the next line; one that fits in none is cut.
    std::string words, word(100, 'I');
    for (int i = 0; i < 12; i++)
        words += "IIII ";
    EXPECT_GE(Letters(words.c_str()).bottom, two.bottom);
    EXPECT_EQ(Letters(word.c_str()).bottom, one.bottom);
    const RECT middle = Letters("II", centered), right = Letters("II", rightAligned);
    EXPECT_NEAR(middle.left, 180 - middle.right, 2);
    EXPECT_GE(right.right, 177);
    EXPECT_GT(right.left, 160);
}

// --- icons ---

struct IconTest : StaticTest {
    std::vector<HMODULE> modules; // the system may keep an icon for the next one at the same place

    ~IconTest() override
    {
        for (HMODULE module : modules)
            FreeLibrary(module);
    }

    // The pixels of a control of 50 x 50 that shows a module's icon of these images.
    Pixels Show(const std::vector<std::pair<int, Bytes>> &images)
    {
        ExecutableDescription description;
        description.is64 = true;
        std::vector<IconGroupMember> members;
        for (const auto &[side, image] : images) {
            const unsigned id = (unsigned)members.size() + 1;
            members.push_back({side, side, image[14], image.size(), id});
            description.resources.push_back({3, (int)id, image, 0});
        }
        description.resources.push_back({14, 7, MakeIconGroup(members), 0});
        const std::string name = "icon" + std::to_string(modules.size()) + ".exe";
        modules.push_back(LoadLibraryA(TestFile(name, BuildPe(description).bytes).c_str()));
        return Show("#7", modules.back());
    }

    Pixels Show(const char *name, HMODULE module)
    {
        Letters(""); // a white background from here on
        HWND control = CreateWindowExA(0, "static", name, WS_CHILD | WS_VISIBLE | asIcon, 0, 0, 50,
                                       50, window, (HMENU)9, module, nullptr);
        UpdateWindow(control);
        const Pixels pixels = PixelsOf(control);
        DestroyWindow(control);
        return pixels;
    }
};

TEST_F(IconTest, IsAsLargeAsEveryIconAndSeenThroughItsMask)
{
    for (int side : {16, 32, 48})
        for (int bits : {4, 8, 16, 24, 32}) {
            Picture picture = MakePicture(side, side, 0xFFFF0000);
            for (int y = 0; y < side; y++)
                std::fill_n(&picture.At(0, y), side / 2, 0);
            const Pixels shown = Show({{side, MakeIconImage(picture, bits)}});
            SCOPED_TRACE(testing::Message() << side << ", " << bits);
            ASSERT_EQ(shown.width, 32);
            EXPECT_EQ(shown.height, 32);
            EXPECT_EQ(shown.At(13, 20), 0xFFFFFFu);
            EXPECT_EQ(shown.At(18, 20), 0xFF0000u);
        }
    EXPECT_EQ(Show({{32, MakeIconImage(MakePicture(32, 32, 0x800000FF), 32)}}).At(5, 5), 0x7F7FFFu);
    // With no opaque pixel at all, the mask alone counts; where it is set, the colour inverts.
    Bytes clear = MakeIconImage(MakePicture(32, 32, 0x00FF0000), 32);
    std::fill(clear.end() - 64, clear.end(), (BYTE)0);
    const Pixels shown = Show({{32, clear}});
    EXPECT_EQ(shown.At(5, 5), 0xFF0000u);
    EXPECT_EQ(shown.At(5, 25), 0x00FFFFu);
    Bytes cut = MakeIconImage(MakePicture(32, 32, 0xFFFF0000), 4);
    cut.resize(300);
    EXPECT_EQ(Show({{32, cut}}).width, 50); // no icon
    // Round the system's own sign for information, too, the ground is seen.
    const Pixels sign = Show("#32516", nullptr);
    EXPECT_EQ(sign.At(0, 0), 0xFFFFFFu);
    EXPECT_NE(sign.At(16, 28), 0xFFFFFFu);
}

TEST_F(IconTest, IsTheNearestImageWithTheMostBits)
{
    const auto image = [](int side, int bits, uint32_t color) {
        return std::pair(side, MakeIconImage(MakePicture(side, side, color), bits));
    };
    const auto red = image(32, 4, 0xFFFF0000), blue = image(32, 24, 0xFF0000FF),
               green = image(16, 32, 0xFF00FF00), cyan = image(48, 32, 0xFF00FFFF);
    EXPECT_EQ(Show({red, blue}).At(5, 5), 0x0000FFu);
    EXPECT_EQ(Show({blue, red}).At(5, 5), 0x0000FFu);
    EXPECT_EQ(Show({cyan, red, green}).At(5, 5), 0xFF0000u);
    EXPECT_EQ(Show({cyan, green}).At(5, 5), 0x00FFFFu);
    EXPECT_EQ(Show({green, cyan}).At(5, 5), 0x00FF00u);
}

} // namespace
