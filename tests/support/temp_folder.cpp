#include "tests/support/temp_folder.h"

#include "platform/files.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fstream>
#include <iterator>

#ifndef _WIN32
#include <sys/resource.h>
#endif

namespace fs = std::filesystem;

static fs::path FromUtf8(const std::string &text)
{
    return fs::path(std::u8string(text.begin(), text.end()));
}

static std::string ToUtf8(const fs::path &path)
{
    const std::u8string text = path.generic_u8string();
    return std::string(text.begin(), text.end());
}

TempFolder::TempFolder()
{
    static std::atomic<int> count;
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    path = fs::temp_directory_path() /
           ("quillmoor-" + std::to_string(now) + "-" + std::to_string(count++));
    fs::create_directories(path);
}

TempFolder::~TempFolder()
{
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

std::string TempFolder::Path(const std::string &name) const
{
    return ToUtf8(path / FromUtf8(name));
}

std::string TempFolder::Write(const std::string &name, const Bytes &bytes) const
{
    const fs::path file = path / FromUtf8(name);
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream.write((const char *)bytes.data(), (std::streamsize)bytes.size());
    return Path(name);
}

std::vector<std::string> TempFolder::Files() const
{
    std::vector<std::string> names;
    for (const auto &entry : fs::recursive_directory_iterator(path))
        if (!entry.is_directory())
            names.push_back(ToUtf8(entry.path().lexically_relative(path)));
    std::sort(names.begin(), names.end());
    return names;
}

Bytes ReadFile(const fs::path &path)
{
    std::ifstream stream(path, std::ios::binary);
    Bytes bytes(stream ? (size_t)fs::file_size(path) : 0);
    stream.read((char *)bytes.data(), (std::streamsize)bytes.size());
    return bytes;
}

FILE *OpenContent(const Bytes &bytes)
{
    static TempFolder folder;
    static int count;
    const std::string path = folder.Write(std::to_string(count++), bytes);
    return OpenForReading(path.c_str());
}

int LimitFileSize(long bytes)
{
#ifdef _WIN32
    (void)bytes;
    return 0;
#else
    rlimit limit;
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = bytes < 0 ? limit.rlim_max : (rlim_t)bytes;
    return setrlimit(RLIMIT_FSIZE, &limit) == 0;
#endif
}
