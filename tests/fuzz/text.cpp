// Code pages both ways, UTF-8 letter by letter, and the names that files are saved under. The first
// byte chooses the page.
#include "cli/file_names.h"
#include "content/string_block.h"
#include "platform/files.h"
#include "platform/native/kernel/code_page.h"
#include "platform/utf8.h"
#include "tests/fuzz/fuzz.h"

#include <algorithm>
#include <cstring>

// What a byte means is a letter of which it is the byte, or an equal one.
static void FillPage(unsigned number)
{
    static CodePage page;
    static unsigned filled;
    if (number == filled || !FillCodePage(number, &page))
        return;
    filled = number;
    for (const WCHAR unit : page.units)
        Check(page.units[page.bytes[unit]] == unit);
}

static void ConvertUnits(const uint8_t *data, size_t size)
{
    Check(TextOfUnits(data, size / 2).size() == size / 2);
    ByteReader reader = OpenBytes(data, size);
    Check(TakeWideText(&reader).size() <= size / 2);
    char text[STRING_TEXT_LENGTH + 1];
    const size_t count = std::min<size_t>(size / 2, STRING_TEXT_LENGTH);
    UnitsToText(data, (int)count, text);
    EscapeControlChars(text);
    Check(strlen(text) <= STRING_TEXT_LENGTH);
    std::vector<WCHAR> units(count);
    for (size_t i = 0; i < count; i++)
        units[i] = (WCHAR)(data[2 * i] | data[2 * i + 1] << 8);
    const int room =
        WideCharToMultiByte(CP_UTF8, 0, units.data(), (int)count, nullptr, 0, nullptr, nullptr);
    std::string utf8((size_t)room, 0);
    Check(count == 0 || WideCharToMultiByte(CP_UTF8, 0, units.data(), (int)count, utf8.data(), room,
                                            nullptr, nullptr) == room);
    for (size_t at = 0; at < utf8.size();) {
        const Utf8Letter letter = LetterAt(utf8, at);
        Check(letter.isValid && letter.length <= utf8.size() - at);
        at += letter.length;
    }
}

static void NameFiles(const std::string &name)
{
    NamesInFolder folder;
    const std::string encoded = EncodeFileName(name);
    for (size_t at = 0; at < encoded.size(); at += LetterAt(encoded, at).length)
        Check(!SteersText(LetterAt(encoded, at).code));
    Check(encoded.find_first_of("/\\:*?\"<>|") == std::string::npos);
    const std::string first = NextFileName(&folder, encoded, ".BMP");
    const std::string second = NextFileName(&folder, encoded, ".BMP");
    Check(FoldName(first) != FoldName(second));
    Check(first.size() <= 255 && second.size() <= 255 && second.ends_with(").BMP"));
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    FillPage(data[0] % 10 == 9 ? 874 : 1250 + data[0] % 10u);
    const std::string bytes((const char *)data + 1, size - 1);
    CodePageOfLocale(bytes);
    ConvertUnits(data + 1, size - 1);
    NameFiles(bytes);
    return 0;
}
