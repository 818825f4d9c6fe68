#include "platform/files.h"

#include <cerrno>
#include <climits>
#include <clocale>
#include <csignal>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

struct OutputFolder {
    int descriptor;
};

static int lastError;
constexpr int notRegular = -1; // none of the system's numbers

const char pathSeparator = '/';

int IsSeparator(const char *path, size_t at)
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

int SeekTo(FILE *file, uint64_t offset)
{
    return offset <= INT64_MAX && fseeko(file, static_cast<off_t>(offset), SEEK_SET) == 0;
}

const char *FileErrorText()
{
    return lastError == notRegular ? notRegularText : strerror(lastError);
}

static OutputFolder *OpenFolderAt(int parent, const char *name, int flags)
{
    const int descriptor = openat(parent, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC | flags);
    if (descriptor < 0) {
        lastError = errno;
        return nullptr;
    }
    return new OutputFolder{descriptor};
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

OutputFolder *OpenSubfolder(const OutputFolder *folder, const char *name)
{
    return OpenFolderAt(folder->descriptor, name, O_NOFOLLOW);
}

OutputFolder *MakeSubfolder(const OutputFolder *folder, const char *name)
{
    if (mkdirat(folder->descriptor, name, 0777) == 0)
        return OpenSubfolder(folder, name);
    lastError = errno;
    return nullptr;
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
    return OpenDescriptor(openat(folder->descriptor, name,
                                 O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666),
                          "wb");
}

MoveResult MoveInFolder(const OutputFolder *folder, const char *from, const char *to, int replace)
{
    const int in = folder->descriptor;
    int failed =
        replace ? renameat(in, from, in, to) : renameat2(in, from, in, to, RENAME_NOREPLACE);
    if (failed && !replace && errno == EINVAL) {
        // The file system cannot move without replacing; a file can be given a second name.
        // A folder cannot, but its move never replaces a file, a link or a folder that holds
        // anything.
        failed = linkat(in, from, in, to, 0);
        struct stat status;
        if (!failed)
            unlinkat(in, from, 0);
        else if (fstatat(in, from, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode))
            failed = renameat(in, from, in, to);
    }
    if (!failed)
        return MoveDone;
    lastError = errno;
    return errno == EEXIST || errno == ENOTEMPTY ? MoveExists : MoveFailed;
}

int ExistsInFolder(const OutputFolder *folder, const char *name)
{
    struct stat status;
    return fstatat(folder->descriptor, name, &status, AT_SYMLINK_NOFOLLOW) == 0;
}

void DeleteInFolder(const OutputFolder *folder, const char *name)
{
    unlinkat(folder->descriptor, name, 0);
}
