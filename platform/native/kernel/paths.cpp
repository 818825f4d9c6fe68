#include "platform/native/kernel/paths.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <pwd.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/native/no_memory.h"
#include "platform/win32/kernel.h"

bool PathExists(const std::string &path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0;
}

std::string AbsolutePath(const char *variable)
{
    const char *value = getenv(variable);
    return value && value[0] == '/' ? value : "";
}

std::string ProgramPath()
{
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    if (length <= 0 || length == static_cast<ssize_t>(sizeof path))
        return "";
    std::string program(path, static_cast<size_t>(length));
    // So the system marks a program that was replaced while it ran.
    constexpr std::string_view mark = " (deleted)";
    if (program.size() > mark.size() && program.ends_with(mark) && !PathExists(program))
        program.resize(program.size() - mark.size());
    return program;
}

std::string UserConfigFolder()
{
    std::string folder = AbsolutePath("XDG_CONFIG_HOME");
    if (folder.empty()) {
        folder = AbsolutePath("HOME");
        const passwd *user = folder.empty() ? getpwuid(getuid()) : nullptr;
        if (user && user->pw_dir && user->pw_dir[0] == '/')
            folder = user->pw_dir;
        if (folder.empty())
            return "";
        folder += "/.config";
    }
    while (folder.size() > 1 && folder.back() == '/')
        folder.pop_back();
    return folder;
}

std::vector<std::string> SystemConfigFolders()
{
    const char *value = getenv("XDG_CONFIG_DIRS");
    std::string_view list = value && value[0] != 0 ? value : "/etc/xdg";
    std::vector<std::string> folders;
    while (!list.empty()) {
        const std::string_view folder = list.substr(0, list.find(':'));
        list.remove_prefix(std::min(folder.size() + 1, list.size()));
        if (folder.starts_with('/'))
            folders.emplace_back(folder);
    }
    return folders;
}

DWORD WINAPI GetModuleFileNameA(HMODULE module, LPSTR path, DWORD size)
{
    std::string program;
    DoesMemorySuffice([&] { program = ProgramPath(); });
    if (module && module != GetModuleHandleA(nullptr))
        return 0;
    if (program.empty() || size == 0)
        return 0;
    const size_t kept = std::min(program.size(), static_cast<size_t>(size) - 1);
    memcpy(path, program.data(), kept);
    path[kept] = 0;
    return kept < program.size() ? size : static_cast<DWORD>(kept);
}

DWORD WINAPI GetFileAttributesA(LPCSTR path)
{
    struct stat status;
    if (!path || stat(path, &status) != 0)
        return INVALID_FILE_ATTRIBUTES;
    return 0;
}

DWORD WINAPI GetCurrentDirectoryA(DWORD size, LPSTR path)
{
    char *folder = getcwd(nullptr, 0);
    if (!folder)
        return 0;
    const size_t length = strlen(folder);
    const bool fits = length < size;
    if (fits)
        strcpy(path, folder);
    free(folder);
    return static_cast<DWORD>(fits ? length : length + 1);
}
