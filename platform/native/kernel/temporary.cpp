// The temporary folder of this process, and names in it.
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/native/kernel/paths.h"
#include "platform/native/no_memory.h"
#include "platform/win32/kernel.h"

constexpr std::string_view folderPrefix = "quillmoor-";
constexpr const char *folderPattern = "quillmoor-XXXXXX";
// A file in the folder that its process holds locked. So what a killed process left is known as
// such, and a folder of the user's own that merely has such a name is not taken for one.
constexpr const char *markName = "in use";

namespace
{

struct Descriptor {
    int number = -1;

    Descriptor() = default;
    explicit Descriptor(int opened) : number(opened)
    {
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(number, other.number);
        return *this;
    }
    ~Descriptor()
    {
        if (number >= 0)
            close(number);
    }
};

// The folder, from its first use to the end of the process that made it.
struct TemporaryFolder {
    std::string path;
    Descriptor mark;
    pid_t maker = 0;

    ~TemporaryFolder()
    {
        std::error_code ignored;
        if (maker == getpid())
            std::filesystem::remove_all(path, ignored);
    }
};

} // namespace

static bool IsOwnFolder(const struct stat &status)
{
    return S_ISDIR(status.st_mode) && status.st_uid == geteuid() && (status.st_mode & 077) == 0;
}

static bool IsOwnFolder(const std::string &path)
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0 && IsOwnFolder(status);
}

static bool IsHourOld(const struct stat &status)
{
    return time(nullptr) - status.st_mtime > 3600;
}

// Removes a folder whose process was killed, with the files that this left. Links in it are
// removed, never followed. One without its mark is removed when it is empty, and old enough that
// nobody is about to mark it.
static void RemoveIfStale(const std::string &path)
{
    const Descriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat status;
    if (fstat(folder.number, &status) != 0 || !IsOwnFolder(status))
        return;
    const Descriptor mark(openat(folder.number, markName, O_RDWR | O_NOFOLLOW | O_CLOEXEC));
    if (mark.number < 0 ? !IsHourOld(status) : flock(mark.number, LOCK_EX | LOCK_NB) != 0)
        return;
    std::error_code error;
    std::filesystem::directory_iterator entry(path, error);
    for (; mark.number >= 0 && !error && entry != std::filesystem::directory_iterator();
         entry.increment(error))
        if (entry->path().filename() != markName)
            unlinkat(folder.number, entry->path().filename().c_str(), 0);
    // The mark goes last: who is killed here leaves a folder that is still known.
    unlinkat(folder.number, markName, 0);
    rmdir(path.c_str());
}

static void RemoveStaleFolders(const std::string &parent)
{
    std::error_code error;
    std::filesystem::directory_iterator entry(parent, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename();
        if (name.size() == strlen(folderPattern) && name.starts_with(folderPrefix))
            RemoveIfStale(entry->path());
    }
}

// Marks a new folder as this process's. Fails when another process has just taken it for a stale
// one.
static bool MarkFolder(TemporaryFolder *folder)
{
    const std::string name = folder->path + "/" + markName;
    struct stat status;
    folder->mark =
        Descriptor(open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    return flock(folder->mark.number, LOCK_EX | LOCK_NB) == 0 &&
           fstat(folder->mark.number, &status) == 0 && status.st_nlink > 0;
}

// Makes a folder that only the user can enter.
static bool MakeOwnFolder(TemporaryFolder *folder)
{
    for (const std::string &parent : {AbsolutePath("TMPDIR"), std::string("/tmp")}) {
        if (parent.empty())
            continue;
        RemoveStaleFolders(parent);
        for (int attempt = 0; attempt < 3; ++attempt) {
            folder->path = parent + '/' + folderPattern;
            if (!mkdtemp(folder->path.data()))
                break;
            if (MarkFolder(folder))
                return true;
            rmdir(folder->path.c_str());
        }
    }
    return false;
}

// Empty on failure.
static const std::string &OwnFolder()
{
    static TemporaryFolder folder;
    // The system's cleaner may have taken a folder that was not used for days.
    if (folder.maker != getpid() || !IsOwnFolder(folder.path)) {
        folder.maker = 0;
        if (MakeOwnFolder(&folder))
            folder.maker = getpid();
        else
            folder.path.clear();
    }
    return folder.path;
}

static DWORD GiveOwnFolder(DWORD size, LPSTR path)
{
    const std::string &folder = OwnFolder();
    if (folder.empty())
        return 0;
    const std::string text = folder + '/';
    if (text.size() >= size)
        return static_cast<DWORD>(text.size()) + 1;
    strcpy(path, text.c_str());
    return static_cast<DWORD>(text.size());
}

DWORD WINAPI GetTempPathA(DWORD size, LPSTR path)
{
    return UnlessMemoryRunsOut<DWORD>(0, [=] { return GiveOwnFolder(size, path); });
}

static UINT FormFileName(LPCSTR folder, LPCSTR prefix, UINT unique, LPSTR path)
{
    struct stat status;
    if (stat(folder, &status) != 0 || !S_ISDIR(status.st_mode))
        return 0;
    char number[8];
    snprintf(number, sizeof number, "%X", unique);
    std::string name = folder;
    if (!name.empty() && name.back() != '/')
        name += '/';
    name += std::string(prefix, strnlen(prefix, 3)) + number + ".tmp";
    if (name.size() >= MAX_PATH)
        return 0;
    strcpy(path, name.c_str());
    return unique;
}

UINT WINAPI GetTempFileNameA(LPCSTR folder, LPCSTR prefix, UINT unique, LPSTR path)
{
    return UnlessMemoryRunsOut(0u,
                               [=] { return FormFileName(folder, prefix, unique & 0xFFFF, path); });
}
