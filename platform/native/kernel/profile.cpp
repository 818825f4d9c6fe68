// Settings files by the rules of Windows. The packaged readers of such files keep other ones: they
// cut a value at a semicolon, take a colon for "=", or want the whole file well-formed.
#include <algorithm>
#include <string>
#include <string_view>
#include <strings.h>

#include "platform/native/kernel/code_page.h"
#include "platform/native/kernel/file_bytes.h"
#include "platform/native/kernel/paths.h"
#include "platform/native/no_memory.h"
#include "platform/win32/kernel.h"

constexpr std::string_view blanks = " \t\v\f";

// What is read when the path in the user's folder has no room.
constexpr char settingsOfTheProgram[] = "Orrindale/VLXPRO30.INI";

// In settings beside the program: the folder that the program stands in, wherever that was moved.
const std::string originMark = "$ORIGIN";

static std::string_view Trim(std::string_view text)
{
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

static bool IsSameName(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && (a.empty() || strncasecmp(a.data(), b.data(), a.size()) == 0);
}

// Takes the next line that is not empty; either byte of a line end ends it.
static std::string_view TakeLine(std::string_view *text)
{
    const size_t start = std::min(text->find_first_not_of("\r\n"), text->size());
    text->remove_prefix(start);
    const std::string_view line = text->substr(0, text->find_first_of("\r\n"));
    text->remove_prefix(line.size());
    return Trim(line);
}

// Finds the value of a key; what stands before the first section belongs to the section "".
static bool FindValue(std::string_view text, std::string_view section, std::string_view key,
                      std::string_view *value)
{
    bool isInside = section.empty();
    while (!text.empty()) {
        const std::string_view line = TakeLine(&text);
        if (line.starts_with(';'))
            continue;
        const size_t end = line.starts_with('[') ? line.find(']') : std::string_view::npos;
        if (end != std::string_view::npos) {
            if (isInside)
                return false;
            isInside = IsSameName(Trim(line.substr(1, end - 1)), section);
            continue;
        }
        const size_t equals = line.find('=');
        if (!isInside || equals == std::string_view::npos ||
            !IsSameName(Trim(line.substr(0, equals)), key))
            continue;
        *value = line.substr(equals + 1);
        *value = Trim(value->substr(0, value->find('\0')));
        const size_t length = value->size();
        if (length >= 2 && value->front() == value->back() &&
            (value->front() == '"' || value->front() == '\''))
            *value = value->substr(1, length - 2);
        return true;
    }
    return false;
}

// The path to read in place of one that may be missing in the user's folder, or that had no room.
// Stores the program's folder when the file lies below it, else "".
static std::string FindSettingsFile(const std::string &path, std::string *origin)
{
    origin->clear();
    const std::string user = UserConfigFolder() + '/';
    const bool isUsers = user != "/" && path.starts_with(user);
    if (!path.empty() && (!isUsers || PathExists(path)))
        return path.starts_with('/') ? path : "";
    const std::string relative = isUsers ? path.substr(user.size()) : settingsOfTheProgram;
    for (const std::string &folder : SystemConfigFolders())
        if (PathExists(folder + '/' + relative))
            return folder + '/' + relative;
    const std::string program = ProgramPath();
    *origin = program.substr(0, program.rfind('/'));
    return *origin + '/' + relative;
}

// The text of a settings file: as it is, or, when it begins with the mark of UTF-16, in the code
// page. Returns false when it cannot be read.
static bool ReadSettings(const std::string &path, std::string *text)
{
    size_t length = 0;
    const FileBytes bytes = ReadWholeFile(path.c_str(), &length);
    if (!bytes)
        return false;
    if (length < 2 || bytes[0] != 0xFF || bytes[1] != 0xFE) {
        text->assign(reinterpret_cast<const char *>(bytes.get()), length);
        return true;
    }
    *text = TextOfUnits(bytes.get() + 2, length / 2 - 1);
    return true;
}

// Puts the program's folder, if there is one, in place of its mark; the value then lies in
// `origin`.
static bool Expand(std::string_view *value, std::string *origin)
{
    if (!origin->empty() && (*value == originMark || value->starts_with(originMark + '/'))) {
        *origin += value->substr(originMark.size());
        *value = *origin;
    }
    return true;
}

DWORD WINAPI GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR text,
                                      DWORD size, LPCSTR file)
{
    if (size == 0)
        return 0;
    std::string settings, origin;
    std::string_view value;
    const auto find = [&] {
        return ReadSettings(FindSettingsFile(file, &origin), &settings) &&
               FindValue(settings, Trim(section), Trim(key), &value) && Expand(&value, &origin);
    };
    if (!UnlessMemoryRunsOut(false, find)) {
        value = fallback ? fallback : "";
        value = value.substr(0, value.find_last_not_of(' ') + 1);
    }
    const size_t kept = std::min(value.size(), static_cast<size_t>(size) - 1);
    std::copy_n(value.begin(), kept, text);
    text[kept] = 0;
    return static_cast<DWORD>(kept);
}
