// Pictures, menus, texts and dialogs of a module, whole, damaged, and hostile.
#include <gtest/gtest.h>

#include <algorithm>
#include <variant>

#include "platform/native/user/dialog_template.h"
#include "platform/native/user/menus.h"
#include "platform/native/user/pictures.h"
#include "platform/win32.h"
#include "samples/builder/builder.h"
#include "tests/support/damage.h"
#include "tests/support/temp_folder.h"
#include "tests/support/transcript.h"

namespace
{

// Words, and in strings the words of their letters and of a 0 behind them.
Bytes Pack(std::initializer_list<std::variant<int, const char *>> parts)
{
    Bytes bytes;
    for (const auto &part : parts)
        if (const int *word = std::get_if<int>(&part))
            AddU16(bytes, (unsigned)*word & 0xFFFF);
        else
            for (const char *letter = std::get<const char *>(part);; ++letter) {
                AddU16(bytes, (BYTE)*letter);
                if (!*letter)
                    break;
            }
    return bytes;
}

// Parts, each at a multiple of 4.
Bytes Align(std::initializer_list<Bytes> parts)
{
    Bytes bytes;
    for (const Bytes &part : parts) {
        PadTo(bytes, 4);
        AddBytes(bytes, part);
    }
    return bytes;
}

const Bytes plain =
    Align({Pack({0x00C4, 0x90C0, 1, 0, 2, 1, -2, 240, 222, 0, 0, "About", 8, "MS Sans Serif"}),
           Pack({0x0300, 0x5001, 0, 0, 128, 200, 50, 14, 1, -1, 128, "OK", 0}),
           Pack({0x0003, 0x5000, 0, 0, -1, 4, 20, 20, -1, -1, 130, -1, 5, 0})});
const Bytes extended = Align(
    {Pack({1,  -1,  0,   0, 1, 0,       0x00C4, 0x90C0, 2, 1,
           -2, 240, 222, 0, 0, "About", 8,      0,      0, "MS Sans Serif"}),
     Pack({0, 0, 0, 0, 0x0300, 0x5001, 128, 200, 50, 14, 1, 0, "button", "OK", 4, 0x5678, 0x1234}),
     Pack({0, 0, 0, 0, 0x0003, 0x5000, -1, 4, 20, 20, -1, -1, -1, 130, -1, 5, 0})});

const Bytes menu =
    Pack({0,    2,   -9,      0x10, "&File", 0,    101,     "&Open", 1,   0,       "",
          0x81, 102, "E&xit", 0x90, "&Help", 0x90, "&More", 0x82,    103, "&About"});

std::string TellPicture(HMODULE module, int name, bool isCursor)
{
    ImagePixels picture = {};
    if (!ReadPicture(module, MAKEINTRESOURCEA(name), isCursor, &picture))
        return " none";
    uint32_t sum = 0;
    for (const uint32_t pixel : picture.pixels)
        sum = sum * 31 + pixel;
    std::string told;
    for (const int number : {picture.width, picture.height, picture.hotX, picture.hotY})
        told += " " + std::to_string(number);
    return told + " " + std::to_string(sum);
}

std::string TellMenu(HMENU shown)
{
    std::string told;
    for (const MenuItem &item : MenuOf(shown)->items)
        told += " " + std::to_string(item.id) + " " + std::to_string(item.flags) + item.text +
                (item.submenu ? "{" + TellMenu(item.submenu) + "}" : "");
    return told;
}

std::string TellDialog(const Bytes &bytes)
{
    DialogTemplate dialog;
    if (!ReadDialogTemplate(bytes.data(), bytes.size(), &dialog))
        return "none";
    std::string told = dialog.caption + " " + dialog.fontFace;
    for (const int number :
         {(int)dialog.style, dialog.x, dialog.y, dialog.width, dialog.height, dialog.fontHeight})
        told += " " + std::to_string(number);
    for (const ControlTemplate &control : dialog.controls) {
        told += "; " + control.className + " " + control.text;
        for (const int number :
             {(int)control.style, control.x, control.y, control.width, control.height, control.id})
            told += " " + std::to_string(number);
    }
    return told;
}

// What the layer makes of a module's resources of one type.
std::string TellResources(HMODULE module, int type)
{
    std::string told;
    if (type == 4) {
        HMENU loaded = LoadMenuResource(module, MAKEINTRESOURCEA(7));
        told = loaded ? TellMenu(loaded) : "none";
        DestroyMenu(loaded);
    } else if (type == 6) {
        for (UINT id = 96; id < 112; id++) {
            char text[9] = "########";
            told += " " + std::to_string(LoadStringA(module, id, text, (int)id % 9));
            told += text;
        }
    } else {
        for (const int name : {7, 8, 9})
            told += TellPicture(module, name, type == 1 || type == 12);
    }
    return told;
}

TEST(Resources, DamagedOnesAreWhatTheirTextTells)
{
    Picture picture = MakePicture(5, 6, 0xFFFF0000);
    for (int i = 0; i < 5; i++)
        picture.At(i, i) = 0x00FFFFFF & 0x1C7123u * (uint32_t)i;
    picture.At(4, 5) = 0x80123456;
    const Bytes few = MakeIconImage(picture, 4), clear = MakeIconImage(MakePicture(3, 4, 0xFF), 32),
                many = MakeIconImage(picture, 32), cursor = MakeCursorImage(picture, 1, 2);
    const std::vector<ResourceDescription> good = {
        {1, 1, cursor},
        {3, 1, few},
        {3, 2, many},
        {3, 3, clear},
        {4, 7, menu},
        {5, 7, plain},
        {5, 8, extended},
        {6, 7, MakeStringBlock({u"One", u"Second", u"", u"The fourth", u"5", u"6th", u"seventh"})},
        {12, 7, MakeIconGroup({{31, 62, 1, cursor.size(), 1}, {34, 68, 1, cursor.size(), 9}})},
        {14, 7, MakeIconGroup({{5, 6, 4, few.size(), 1}})},
        {14, 9, MakeIconGroup({{3, 4, 32, clear.size(), 3}})},
        {14, 8, MakeIconGroup({{48, 6, 4, few.size(), 1}, {16, 6, 32, many.size(), 2}})},
    };
    const TempFolder folder;
    std::vector<std::string> told;
    for (size_t i = 0; i < good.size(); i++) {
        const int type = (int)good[i].type.number;
        const auto outcomeOf = [&](const Bytes &bytes) {
            if (type == 5)
                return Described(Text(TellDialog(bytes)));
            std::vector<ResourceDescription> resources = good;
            resources[i].data = bytes;
            const Bytes file = BuildPe({.resources = resources, .is64 = true}).bytes;
            HMODULE module = LoadLibraryA(folder.Write("module.dll", file).c_str());
            const std::string outcome = TellResources(module, type);
            FreeLibrary(module);
            remove(folder.Path("module.dll").c_str()); // writing it anew waits for the disk
            return Described(Text(outcome));
        };
        told.push_back("Of type " + std::to_string(type));
        const size_t wild = std::min<size_t>(good[i].data.size(), type == 5 ? 999 : 64);
        const auto lines = TellDamaged(good[i].data, wild, outcomeOf);
        told.insert(told.end(), lines.begin(), lines.end());
    }
    ExpectTold(told, NATIVE_FOLDER "/user/damaged_resources.txt",
               TOLD_FOLDER "/damaged_resources.told.txt");
}

TEST(Resources, DialogsThatNobodyWouldLookAtAreNone)
{
    const struct {
        int controls, points;
        size_t letters;
        bool isTaken;
    } cases[] = {
        {255, 255, 256, true}, {256, 8, 0, false}, {1, 256, 0, false}, {3, 8, 22'000, false}};
    for (const auto &[controls, points, letters, isTaken] : cases) {
        Bytes bytes = Pack({0x40, 0, 0, 0, controls, 0, 0, 9, 9, 0, 0, 0, points, "F"});
        for (int i = 0; i < controls; ++i) {
            PadTo(bytes, 4);
            AddBytes(bytes, Pack({0, 0, 0, 0, 0, 0, 1, 1, 1, 0}));
            AddEndedText(bytes, std::string(letters, 'x'), true);
            AddU16(bytes, 0);
        }
        EXPECT_EQ(TellDialog(bytes) != "none", isTaken) << controls;
    }
}

} // namespace
