#include "cli/file_names.h"

#include "platform/files.h"
#include "platform/utf8.h"

#include <cstdio>
#include <cstring>

// The shortest limit that is met: bytes on Linux; Windows counts code units, which are no more.
#define FILE_NAME_LIMIT 255

static void AppendEncoded(std::string &encoded, unsigned char byte)
{
    char code[4];
    snprintf(code, sizeof code, "%%%02X", (unsigned)byte);
    encoded += code;
}

// Windows gives these names to devices, whatever blanks and extension follow.
static bool IsDeviceName(const std::string &name)
{
    std::string stem = FoldName(name.substr(0, name.find('.')));
    stem.resize(stem.find_last_not_of(' ') + 1);
    for (const char *device : {"con", "prn", "aux", "nul", "conin$", "conout$"})
        if (stem == device)
            return true;
    const bool numbered = stem.rfind("com", 0) == 0 || stem.rfind("lpt", 0) == 0;
    const std::string number = numbered ? stem.substr(3) : "";
    return (number.size() == 1 && number[0] >= '0' && number[0] <= '9') || number == "\xC2\xB9" ||
           number == "\xC2\xB2" || number == "\xC2\xB3";
}

std::string EncodeFileName(const std::string &name)
{
    std::string encoded;
    const bool device = IsDeviceName(name);
    for (size_t i = 0; i < name.size();) {
        const Utf8Letter letter = LetterAt(name, i);
        const bool isEncoded = SteersText(letter.code) || (device && i == 0) ||
                               (letter.length == 1 && strchr("<>:\"/\\|?*", name[i]) != nullptr);
        for (size_t end = i + letter.length; i < end; i++) {
            if (isEncoded)
                AppendEncoded(encoded, (unsigned char)name[i]);
            else
                encoded += name[i];
        }
    }
    return encoded;
}

std::string EncodeAnyName(const std::string &name)
{
    const std::string encoded = EncodeFileName(name);
    const size_t first = encoded.find_first_not_of(". ");
    const size_t last = encoded.find_last_not_of(". ");
    std::string any;
    for (size_t i = 0; i < encoded.size(); i++) {
        if (first == std::string::npos || i < first || i > last)
            AppendEncoded(any, (unsigned char)encoded[i]);
        else
            any += encoded[i];
    }
    return any.empty() ? "unnamed" : any;
}

std::string EncodeMarked(const std::string &word)
{
    std::string marked;
    AppendEncoded(marked, (unsigned char)word[0]);
    return marked + word.substr(1);
}

// Cuts UTF-8 text to at most `limit` bytes, between two characters and not inside a %XX.
static std::string Shorten(const std::string &text, size_t limit)
{
    if (text.size() <= limit)
        return text;
    size_t end = limit;
    while (end > 0 && ((unsigned char)text[end] & 0xC0) == 0x80)
        end--;
    for (size_t back = 1; back <= 2 && back <= end; back++)
        if (text[end - back] == '%')
            return text.substr(0, end - back);
    return text.substr(0, end);
}

std::string NextFileName(NamesInFolder *folder, const std::string &encoded,
                         const std::string &extension)
{
    std::string stem = Shorten(encoded, FILE_NAME_LIMIT - extension.size());
    if (extension.empty())
        stem.resize(stem.find_last_not_of(". ") + 1);
    std::string name = stem + extension;
    if (folder->taken.insert(FoldName(name)).second)
        return name;
    int &number = folder->lastNumber.try_emplace(FoldName(name), 1).first->second;
    do {
        number++;
        const std::string tail = " (" + std::to_string(number) + ")" + extension;
        name = Shorten(encoded, FILE_NAME_LIMIT - tail.size()) + tail;
    } while (!folder->taken.insert(FoldName(name)).second);
    return name;
}
