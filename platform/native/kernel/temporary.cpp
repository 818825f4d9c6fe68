// The temporary folder of this process, and names in it.
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/win32/kernel.h"

constexpr std::string_view folderPrefix = "quillmoor-";
constexpr std::string_view folderPattern = "quillmoor-XXXXXX";

static bool IsOwnFolder(const std::string &path)
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == geteuid() && (status.st_mode & 077) == 0;
}

// A process that was killed leaves its folder behind, as a rule empty. One that still runs makes
// another when its own is gone.
static void RemoveStaleFolders(const char *parent)
{
    const auto anHourAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::error_code error;
    std::filesystem::directory_iterator entry(parent, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename();
        std::error_code gone;
        if (name.size() == folderPattern.size() && name.starts_with(folderPrefix) &&
            IsOwnFolder(entry->path()) && entry->last_write_time(gone) < anHourAgo && !gone)
            rmdir(entry->path().c_str());
    }
}

// Makes a folder that only the user can enter; empty on failure.
static std::string MakeOwnFolder()
{
    const char *chosen = getenv("TMPDIR");
    for (const char *parent : {chosen, "/tmp"}) {
        if (!parent || parent[0] != '/')
            continue;
        RemoveStaleFolders(parent);
        std::string path = std::string(parent).append("/").append(folderPattern);
        if (mkdtemp(path.data()))
            return path;
    }
    return "";
}

namespace
{

// The folder, from its first use to the end of the process that made it.
struct TemporaryFolder {
    std::string path;
    pid_t maker = 0;

    ~TemporaryFolder()
    {
        std::error_code ignored;
        if (maker == getpid())
            std::filesystem::remove_all(path, ignored);
    }
};

} // namespace

static const std::string &OwnFolder()
{
    static TemporaryFolder folder;
    // The system's cleaner may have taken a folder that was not used for days.
    if (folder.maker != getpid() || !IsOwnFolder(folder.path)) {
        folder.path = MakeOwnFolder();
        folder.maker = folder.path.empty() ? 0 : getpid();
    }
    return folder.path;
}

DWORD WINAPI GetTempPathA(DWORD size, LPSTR path)
{
    const std::string &folder = OwnFolder();
    if (folder.empty())
        return 0;
    const std::string text = folder + '/';
    if (!path || text.size() >= size)
        return static_cast<DWORD>(text.size()) + 1;
    memcpy(path, text.c_str(), text.size() + 1);
    return static_cast<DWORD>(text.size());
}

UINT WINAPI GetTempFileNameA(LPCSTR folder, LPCSTR prefix, UINT unique, LPSTR path)
{
    struct stat status;
    unique &= 0xFFFF;
    if (!folder || !prefix || !path || unique == 0 || stat(folder, &status) != 0 ||
        !S_ISDIR(status.st_mode))
        return 0;
    char number[8];
    snprintf(number, sizeof number, "%X", unique);
    std::string name = folder;
    if (!name.empty() && name.back() != '/')
        name += '/';
    name += std::string(prefix, strnlen(prefix, 3)) + number + ".tmp";
    if (name.size() >= MAX_PATH)
        return 0;
    memcpy(path, name.c_str(), name.size() + 1);
    return unique;
}
