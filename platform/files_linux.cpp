#include "platform/files.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <clocale>
#include <csignal>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

struct OutputFolder {
    int descriptor;
};

static int lastError;
constexpr int notRegular = -1; // none of the system's numbers

const char pathSeparator = '/';

bool IsSeparator(const char *path, size_t at)
{
    return path[at] == '/';
}

size_t FolderLength(const char *path)
{
    const char *last = strrchr(path, '/');
    return last ? static_cast<size_t>(last - path) + 1 : 0;
}

std::string AddressPath(const char *path)
{
    static const char plain[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    std::string address;
    for (path += path[0] == '/'; *path != 0; ++path) {
        char byte[] = {*path, 0, 0, 0};
        if (!strchr(plain, *path))
            snprintf(byte, sizeof byte, "%%%02X", static_cast<unsigned char>(*path));
        address += byte;
    }
    return address;
}

std::string FoldName(const std::string &name)
{
    std::string folded = name;
    bool isAscii = true;
    for (char &letter : folded) {
        isAscii = isAscii && static_cast<unsigned char>(letter) < 0x80;
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter + 'a' - 'A');
    }
    if (isAscii)
        return folded;
    static const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (!utf8)
        return name;
    const locale_t before = uselocale(utf8);
    folded.clear();
    std::mbstate_t reading = {}, writing = {};
    for (size_t at = 0; at < name.size();) {
        wchar_t letter = 0;
        size_t length = std::mbrtowc(&letter, name.data() + at, name.size() - at, &reading);
        char bytes[MB_LEN_MAX];
        if (length == 0 || length > name.size()) { // not UTF-8: the byte stands for itself
            reading = {};
            folded += name[at++];
            continue;
        }
        at += length;
        length = std::wcrtomb(
            bytes, static_cast<wchar_t>(std::towlower(static_cast<wint_t>(letter))), &writing);
        folded.append(bytes, length);
    }
    uselocale(before);
    return folded;
}

struct CurrentFolder {
    int descriptor;
};

CurrentFolder *LeaveCurrentFolder()
{
    const int descriptor = open(".", O_PATH | O_DIRECTORY | O_CLOEXEC);
    auto *folder = descriptor < 0 ? nullptr : new (std::nothrow) CurrentFolder{descriptor};
    if (folder && chdir("/") == 0)
        return folder;
    delete folder;
    if (descriptor >= 0)
        close(descriptor);
    return nullptr;
}

void ReturnToFolder(CurrentFolder *folder)
{
    if (!folder)
        return;
    if (fchdir(folder->descriptor) != 0)
        lastError = errno;
    close(folder->descriptor);
    delete folder;
}

static FILE *OpenDescriptor(int descriptor, const char *mode)
{
    FILE *file = descriptor < 0 ? nullptr : fdopen(descriptor, mode);
    if (!file) {
        lastError = errno;
        if (descriptor >= 0)
            close(descriptor);
    }
    return file;
}

FILE *OpenForReading(const char *name)
{
    // Asked before opening, which does things to a pipe or a device, and may wait.
    struct stat status;
    if (stat(name, &status) == 0 && !S_ISREG(status.st_mode)) {
        lastError = S_ISDIR(status.st_mode) ? EISDIR : notRegular;
        return nullptr;
    }
    return OpenDescriptor(open(name, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY), "rb");
}

FILE *OpenPathForReading(const char *path)
{
    return OpenForReading(path);
}

void FailWritesPastLimit()
{
    signal(SIGXFSZ, SIG_IGN);
}

int64_t FileLength(FILE *file)
{
    if (fseeko(file, 0, SEEK_END) != 0)
        return -1;
    return ftello(file);
}

bool SeekTo(FILE *file, uint64_t offset)
{
    return offset <= INT64_MAX && fseeko(file, static_cast<off_t>(offset), SEEK_SET) == 0;
}

// Reads a run of the file; false when it ends early.
static bool ReadRun(int descriptor, char *bytes, size_t size, off_t offset)
{
    while (size > 0) {
        const ssize_t count = pread(descriptor, bytes, size, offset);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        bytes += count;
        size -= static_cast<size_t>(count);
        offset += count;
    }
    return true;
}

bool ReadOverZeroes(FILE *file, void *zeroes, size_t size)
{
    const int descriptor = fileno(file);
    const off_t end = static_cast<off_t>(size);
    struct stat status;
    if (fstat(descriptor, &status) != 0 || status.st_size < end)
        return false;
    for (off_t at = 0; at < end;) {
        off_t data = lseek(descriptor, at, SEEK_DATA);
        if (data < 0 && errno == ENXIO) // a hole to the end, or the file has become shorter
            return fstat(descriptor, &status) == 0 && status.st_size >= end;
        off_t hole = data < 0 ? end : lseek(descriptor, data, SEEK_HOLE);
        if (data < 0 || hole <= data) // the file system knows no holes
            data = at, hole = end;
        hole = std::min(hole, end);
        if (data < hole && !ReadRun(descriptor, static_cast<char *>(zeroes) + data,
                                    static_cast<size_t>(hole - data), data))
            return false;
        at = hole;
    }
    return true;
}

const char *FileErrorText()
{
    return lastError == notRegular ? notRegularText : strerror(lastError);
}

bool NameWasTaken()
{
    return lastError == EEXIST;
}

bool DiskWasFull()
{
    return lastError == ENOSPC || lastError == EDQUOT;
}

void NoteStreamError()
{
    lastError = errno;
}

bool IsFolder(const char *path)
{
    struct stat status;
    return stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

namespace
{

struct CloseDirectory {
    void operator()(DIR *folder) const
    {
        closedir(folder);
    }
};

} // namespace

bool ListFolder(const char *path, std::vector<FolderEntry> *items)
{
    items->clear();
    const std::unique_ptr<DIR, CloseDirectory> folder(opendir(path));
    while (folder) {
        errno = 0;
        const dirent *entry = readdir(folder.get());
        if (!entry)
            break;
        struct stat status;
        const std::string name = entry->d_name;
        if (name == "." || name == ".." ||
            fstatat(dirfd(folder.get()), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            continue;
        if (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode))
            items->push_back({name, S_ISDIR(status.st_mode)});
    }
    if (errno != 0)
        lastError = errno;
    return errno == 0;
}

static OutputFolder *OpenFolderAt(int parent, const char *name, int flags)
{
    const int descriptor = openat(parent, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC | flags);
    if (descriptor < 0) {
        lastError = errno;
        return nullptr;
    }
    auto *folder = new (std::nothrow) OutputFolder{descriptor};
    if (!folder) {
        lastError = ENOMEM;
        close(descriptor);
    }
    return folder;
}

OutputFolder *OpenFolder(const char *path)
{
    const std::string whole = path;
    for (size_t end = whole.find('/', 1); end != std::string::npos; end = whole.find('/', end + 1))
        mkdir(whole.substr(0, end).c_str(), 0777);
    mkdir(path, 0777);
    // A part that could not be made shows here, as the reason why the folder cannot be opened.
    return OpenFolderAt(AT_FDCWD, path, 0);
}

OutputFolder *OpenFolderHere(const char *name)
{
    mkdir(name, 0777);
    return OpenFolderAt(AT_FDCWD, name, O_NOFOLLOW);
}

OutputFolder *OpenSubfolder(const OutputFolder *folder, const char *name)
{
    return OpenFolderAt(folder->descriptor, name, O_NOFOLLOW);
}

OutputFolder *MakeSubfolder(const OutputFolder *folder, const char *name)
{
    if (mkdirat(folder->descriptor, name, 0777) != 0) {
        lastError = errno;
        return nullptr;
    }
    OutputFolder *made = OpenSubfolder(folder, name);
    if (!made)
        DeleteSubfolder(folder, name);
    return made;
}

void CloseFolder(OutputFolder *folder)
{
    if (!folder)
        return;
    close(folder->descriptor);
    delete folder;
}

FILE *CreateNewFile(const OutputFolder *folder, const char *name)
{
    const int descriptor = openat(folder->descriptor, name,
                                  O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    FILE *file = OpenDescriptor(descriptor, "wb");
    if (!file && descriptor >= 0)
        unlinkat(folder->descriptor, name, 0);
    return file;
}

FILE *OpenEmptyFile(const OutputFolder *folder, const char *name)
{
    const int descriptor =
        openat(folder->descriptor, name, O_WRONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    struct stat status;
    if (descriptor >= 0 &&
        (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size != 0)) {
        close(descriptor);
        return nullptr;
    }
    return OpenDescriptor(descriptor, "wb");
}

// Without replacing, where the file system has no such move and gives no second names either: the
// new name is taken by an empty file, which the move then replaces.
static int MoveOntoOwnFile(int from, const char *oldName, int to, const char *newName)
{
    const int taken =
        openat(to, newName, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (taken < 0)
        return -1;
    close(taken);
    if (renameat(from, oldName, to, newName) == 0)
        return 0;
    const int error = errno;
    unlinkat(to, newName, 0);
    errno = error;
    return -1;
}

// Where the file system cannot move without replacing, a file can be given a second name. A folder
// cannot, but its move never replaces a file, a link or a folder that holds anything.
static int MoveBySteps(int from, const char *oldName, int to, const char *newName)
{
    struct stat status;
    if (fstatat(from, oldName, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode))
        return renameat(from, oldName, to, newName);
    if (linkat(from, oldName, to, newName, 0) == 0)
        return unlinkat(from, oldName, 0);
    return errno == EEXIST ? -1 : MoveOntoOwnFile(from, oldName, to, newName);
}

MoveResult MoveBetween(const OutputFolder *from, const char *oldName, const OutputFolder *to,
                       const char *newName, bool replace)
{
    const int source = from->descriptor, target = to->descriptor;
    int failed = replace ? renameat(source, oldName, target, newName)
                         : renameat2(source, oldName, target, newName, RENAME_NOREPLACE);
    if (failed && !replace && errno == EINVAL)
        failed = MoveBySteps(source, oldName, target, newName);
    if (!failed)
        return MoveDone;
    lastError = errno;
    return errno == EEXIST || errno == ENOTEMPTY ? MoveExists : MoveFailed;
}

bool ExistsInFolder(const OutputFolder *folder, const char *name)
{
    struct stat status;
    return fstatat(folder->descriptor, name, &status, AT_SYMLINK_NOFOLLOW) == 0;
}

void DeleteSubfolder(const OutputFolder *folder, const char *name)
{
    unlinkat(folder->descriptor, name, AT_REMOVEDIR);
}

void DeleteInFolder(const OutputFolder *folder, const char *name)
{
    unlinkat(folder->descriptor, name, 0);
}
