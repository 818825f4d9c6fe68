#include "platform/files.h"

#include <windows.h>

#include <cstring>
#include <fcntl.h>
#include <io.h>
#include <string>

struct OutputFolder {
    std::wstring path; // whole, in the form that has no length limit, ends with a backslash
    HANDLE held;       // keeps the folder from being moved away or replaced meanwhile
};

static DWORD lastError;
constexpr DWORD notRegular = 1u << 29; // none of the system's numbers

const char pathSeparator = '\\';

// A separator's byte can be the second byte of a double-byte character of the code page.
bool IsSeparator(const char *path, size_t at)
{
    if (path[at] == '/')
        return true;
    if (path[at] != '\\' && path[at] != ':')
        return false;
    size_t place = 0;
    while (place < at)
        place += IsDBCSLeadByte(static_cast<BYTE>(path[place])) && path[place + 1] != 0 ? 2 : 1;
    return place == at;
}

size_t FolderLength(const char *path)
{
    size_t length = strlen(path);
    while (length > 0 && !IsSeparator(path, length - 1))
        --length;
    return length;
}

std::string AddressPath(const char *path)
{
    return path;
}

static std::wstring Wide(const char *text)
{
    const int length = MultiByteToWideChar(CP_UTF8, 0, text, -1, nullptr, 0);
    std::wstring wide(length > 0 ? static_cast<size_t>(length) : 1, 0);
    MultiByteToWideChar(CP_UTF8, 0, text, -1, wide.data(), length);
    wide.pop_back();
    return wide;
}

std::string FoldName(const std::string &name)
{
    std::wstring wide = Wide(name.c_str());
    CharLowerBuffW(wide.data(), static_cast<DWORD>(wide.size()));
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()),
                                           nullptr, 0, nullptr, nullptr);
    std::string folded(static_cast<size_t>(length), 0);
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), folded.data(),
                        length, nullptr, nullptr);
    return folded;
}

// The whole path behind a name, in the form that has no length limit.
static std::wstring WholePath(const char *name)
{
    const std::wstring wide = Wide(name);
    const DWORD length = GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
    std::wstring whole(length, 0);
    whole.resize(GetFullPathNameW(wide.c_str(), length, whole.data(), nullptr));
    if (whole.rfind(L"\\\\?\\", 0) == 0 || whole.rfind(L"\\\\.\\", 0) == 0)
        return whole;
    if (whole.rfind(L"\\\\", 0) == 0)
        return L"\\\\?\\UNC" + whole.substr(1);
    return L"\\\\?\\" + whole;
}

struct CurrentFolder {
    std::wstring path;
};

CurrentFolder *LeaveCurrentFolder()
{
    WCHAR system[MAX_PATH];
    const UINT systemLength = GetSystemDirectoryW(system, MAX_PATH);
    std::wstring path(GetCurrentDirectoryW(0, nullptr), 0);
    const DWORD length = GetCurrentDirectoryW(static_cast<DWORD>(path.size()), path.data());
    if (systemLength == 0 || systemLength >= MAX_PATH || length == 0 || length >= path.size() ||
        !SetCurrentDirectoryW(system))
        return nullptr;
    return new CurrentFolder{path};
}

void ReturnToFolder(CurrentFolder *folder)
{
    if (folder)
        SetCurrentDirectoryW(folder->path.c_str());
    delete folder;
}

static FILE *OpenHandle(HANDLE handle, int flags, const char *mode)
{
    if (handle == INVALID_HANDLE_VALUE) {
        lastError = GetLastError();
        return nullptr;
    }
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), flags | _O_BINARY);
    FILE *file = descriptor < 0 ? nullptr : _fdopen(descriptor, mode);
    if (!file) {
        lastError = ERROR_TOO_MANY_OPEN_FILES;
        if (descriptor < 0)
            CloseHandle(handle);
        else
            _close(descriptor);
    }
    return file;
}

static FILE *OpenRegular(HANDLE handle)
{
    if (handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_DISK) {
        CloseHandle(handle);
        lastError = notRegular;
        return nullptr;
    }
    return OpenHandle(handle, _O_RDONLY, "rb");
}

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

FILE *OpenForReading(const char *name)
{
    return OpenRegular(CreateFileW(WholePath(name).c_str(), GENERIC_READ, shareAll, nullptr,
                                   OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

FILE *OpenPathForReading(const char *path)
{
    return OpenRegular(CreateFileA(path, GENERIC_READ, shareAll, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr));
}

void FailWritesPastLimit()
{
}

int64_t FileLength(FILE *file)
{
    if (_fseeki64(file, 0, SEEK_END) != 0)
        return -1;
    return _ftelli64(file);
}

bool SeekTo(FILE *file, uint64_t offset)
{
    return offset <= INT64_MAX && _fseeki64(file, static_cast<int64_t>(offset), SEEK_SET) == 0;
}

bool ReadOverZeroes(FILE *file, void *zeroes, size_t size)
{
    return SeekTo(file, 0) && fread(zeroes, 1, size, file) == size;
}

const char *FileErrorText()
{
    static char text[600];
    if (lastError == notRegular)
        return notRegularText;
    WCHAR wide[300];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                  nullptr, lastError, 0, wide, sizeof wide / sizeof *wide, nullptr);
    while (length > 0 && (wide[length - 1] <= L' ' || wide[length - 1] == L'.'))
        --length;
    const int bytes = length == 0 ? 0
                                  : WideCharToMultiByte(CP_UTF8, 0, wide, static_cast<int>(length),
                                                        text, sizeof text - 1, nullptr, nullptr);
    text[bytes] = 0;
    if (bytes == 0)
        snprintf(text, sizeof text, "system error %lu", lastError);
    return text;
}

bool NameWasTaken()
{
    return lastError == ERROR_ALREADY_EXISTS || lastError == ERROR_FILE_EXISTS;
}

bool DiskWasFull()
{
    return lastError == ERROR_DISK_FULL || lastError == ERROR_HANDLE_DISK_FULL;
}

void NoteStreamError()
{
    lastError = _doserrno;
}

bool IsFolder(const char *path)
{
    const DWORD attributes = GetFileAttributesW(WholePath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

static std::string NameOf(const WIN32_FIND_DATAW &found)
{
    char name[3 * MAX_PATH];
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, found.cFileName, -1, name, sizeof name, nullptr, nullptr);
    return std::string(name, length > 0 ? static_cast<size_t>(length) - 1 : 0);
}

// Other files that are stored elsewhere, as those of a cloud, are files all the same.
static bool LeadsElsewhere(const WIN32_FIND_DATAW &found)
{
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (found.dwReserved0 == IO_REPARSE_TAG_SYMLINK ||
            found.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

namespace
{

struct FolderSearch {
    HANDLE handle;

    ~FolderSearch()
    {
        if (handle != INVALID_HANDLE_VALUE)
            FindClose(handle);
    }
};

} // namespace

bool ListFolder(const char *path, std::vector<FolderEntry> *items)
{
    items->clear();
    std::wstring pattern = WholePath(path);
    if (!pattern.ends_with(L'\\'))
        pattern += L'\\';
    pattern += L'*';
    WIN32_FIND_DATAW found;
    const FolderSearch search = {FindFirstFileW(pattern.c_str(), &found)};
    for (BOOL more = search.handle != INVALID_HANDLE_VALUE; more;
         more = FindNextFileW(search.handle, &found)) {
        const std::string name = NameOf(found);
        if (name != "." && name != ".." && !LeadsElsewhere(found))
            items->push_back({name, (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
    }
    const DWORD error = GetLastError();
    if (error != ERROR_NO_MORE_FILES)
        lastError = error;
    return error == ERROR_NO_MORE_FILES;
}

static OutputFolder *HoldFolder(const std::wstring &path, DWORD flags)
{
    HANDLE held = CreateFileW(path.c_str(), FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
    if (held == INVALID_HANDLE_VALUE) {
        lastError = GetLastError();
        return nullptr;
    }
    BY_HANDLE_FILE_INFORMATION information;
    const DWORD refused = flags & FILE_FLAG_OPEN_REPARSE_POINT ? FILE_ATTRIBUTE_REPARSE_POINT : 0;
    if (!GetFileInformationByHandle(held, &information) ||
        !(information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) ||
        (information.dwFileAttributes & refused)) {
        CloseHandle(held);
        lastError = ERROR_DIRECTORY;
        return nullptr;
    }
    return new OutputFolder{path + (path.back() == L'\\' ? L"" : L"\\"), held};
}

OutputFolder *OpenFolder(const char *path)
{
    const std::wstring whole = WholePath(path);
    for (size_t end = whole.find(L'\\', 4); end != std::wstring::npos;
         end = whole.find(L'\\', end + 1))
        CreateDirectoryW(whole.substr(0, end).c_str(), nullptr);
    CreateDirectoryW(whole.c_str(), nullptr);
    return HoldFolder(whole, 0);
}

OutputFolder *OpenFolderHere(const char *name)
{
    const std::wstring whole = WholePath(name);
    CreateDirectoryW(whole.c_str(), nullptr);
    return HoldFolder(whole, FILE_FLAG_OPEN_REPARSE_POINT);
}

OutputFolder *OpenSubfolder(const OutputFolder *folder, const char *name)
{
    return HoldFolder(folder->path + Wide(name), FILE_FLAG_OPEN_REPARSE_POINT);
}

OutputFolder *MakeSubfolder(const OutputFolder *folder, const char *name)
{
    if (!CreateDirectoryW((folder->path + Wide(name)).c_str(), nullptr)) {
        lastError = GetLastError();
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
    CloseHandle(folder->held);
    delete folder;
}

FILE *CreateNewFile(const OutputFolder *folder, const char *name)
{
    HANDLE handle = CreateFileW((folder->path + Wide(name)).c_str(), GENERIC_READ | GENERIC_WRITE,
                                0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    FILE *file = OpenHandle(handle, _O_RDWR, "w+b");
    if (!file && handle != INVALID_HANDLE_VALUE)
        DeleteInFolder(folder, name);
    return file;
}

FILE *OpenEmptyFile(const OutputFolder *folder, const char *name)
{
    HANDLE handle = CreateFileW((folder->path + Wide(name)).c_str(), GENERIC_READ | GENERIC_WRITE,
                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    BY_HANDLE_FILE_INFORMATION found;
    if (handle != INVALID_HANDLE_VALUE &&
        (!GetFileInformationByHandle(handle, &found) ||
         (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) || found.nFileSizeHigh != 0 ||
         found.nFileSizeLow != 0)) {
        CloseHandle(handle);
        return nullptr;
    }
    return OpenHandle(handle, _O_RDWR, "w+b");
}

MoveResult MoveBetween(const OutputFolder *from, const char *oldName, const OutputFolder *to,
                       const char *newName, bool replace)
{
    if (MoveFileExW((from->path + Wide(oldName)).c_str(), (to->path + Wide(newName)).c_str(),
                    replace ? MOVEFILE_REPLACE_EXISTING : 0))
        return MoveDone;
    lastError = GetLastError();
    return lastError == ERROR_ALREADY_EXISTS || lastError == ERROR_FILE_EXISTS ? MoveExists
                                                                               : MoveFailed;
}

bool ExistsInFolder(const OutputFolder *folder, const char *name)
{
    return GetFileAttributesW((folder->path + Wide(name)).c_str()) != INVALID_FILE_ATTRIBUTES;
}

void DeleteSubfolder(const OutputFolder *folder, const char *name)
{
    RemoveDirectoryW((folder->path + Wide(name)).c_str());
}

void DeleteInFolder(const OutputFolder *folder, const char *name)
{
    DeleteFileW((folder->path + Wide(name)).c_str());
}
