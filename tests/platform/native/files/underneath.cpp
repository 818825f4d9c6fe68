// Files that change while they are read, and runs that are ended while they save.
#include "exe/catalog.h"
#include "tests/support/reading.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <map>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// In place of the system's call, while it is set.
static std::function<ssize_t(int, void *, size_t, off_t)> onRead;

extern "C" ssize_t __real_pread(int file, void *bytes, size_t size, off_t offset);
extern "C" ssize_t __wrap_pread(int file, void *bytes, size_t size, off_t offset);
extern "C" ssize_t __wrap_pread(int file, void *bytes, size_t size, off_t offset)
{
    return onRead ? onRead(file, bytes, size, offset) : __real_pread(file, bytes, size, offset);
}

static Bytes BuildTwo(bool isNe)
{
    const ExecutableDescription two = {
        .resources = {{2, 1, Bytes(30000, 'p')}, {10, u"DATA", Text("raw")}}};
    return (isNe ? BuildNe(two) : BuildPe(two)).bytes;
}

TEST(ChangeUnderneath, IsToldOrGoesUnnoticed)
{
    const TempFolder folder;
    const std::string path = folder.Path("two.dll");
    int reads = 0;
    const struct {
        const char *change;
        std::function<ssize_t(int, void *, size_t, off_t)> read;
        ProbeOutcome outcome;
    } cases[] = {
        {"it shrinks",
         [&](int file, void *bytes, size_t size, off_t offset) {
             fs::resize_file(path, 20000);
             return __real_pread(file, bytes, size, offset);
         },
         ProbeFailed},
        {"it is emptied after a part",
         [&](int file, void *bytes, size_t size, off_t offset) {
             if (reads++ > 0)
                 fs::resize_file(path, 0);
             return __real_pread(file, bytes, std::min<size_t>(size, 10000), offset);
         },
         ProbeFailed},
        {"its drive goes away",
         [&](int file, void *bytes, size_t size, off_t offset) {
             errno = EIO;
             return reads++ > 0 ? -1 : __real_pread(file, bytes, size / 2, offset);
         },
         ProbeFailed},
        {"reads are interrupted",
         [&](int file, void *bytes, size_t, off_t offset) {
             errno = EINTR;
             return reads++ % 2 ? -1 : __real_pread(file, bytes, 1000, offset);
         },
         ProbeRead},
        {"it grows",
         [&](int file, void *bytes, size_t size, off_t offset) {
             fs::resize_file(path, 100000);
             return __real_pread(file, bytes, size, offset);
         },
         ProbeRead},
        {"another takes its name",
         [&](int file, void *bytes, size_t size, off_t offset) {
             fs::rename(folder.Write("other", Text("MZ")), path);
             return __real_pread(file, bytes, size, offset);
         },
         ProbeRead},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.change);
        FILE *file = fopen(folder.Write("two.dll", BuildTwo(false)).c_str(), "rb");
        reads = 0;
        onRead = row.read;
        EXPECT_EQ(ProbeFile(nullptr, file), row.outcome);
        onRead = nullptr;
        EXPECT_EQ(NotedFailure(), row.outcome == ProbeRead ? FailureNone : FailureUnreadable);
        EXPECT_EQ(openCatalog.count, row.outcome == ProbeRead ? 2 : 0);
        ReleaseCatalog(&openCatalog);
        fclose(file);
        fs::remove(path);
    }
}

// An NE file of which nothing can be read any more behind so many bytes: there it ends, or the
// drive is gone.
struct CutFile {
    Bytes bytes;
    size_t left;
    bool fails;
    off64_t position;
};

static ssize_t ReadCut(void *cookie, char *bytes, size_t size)
{
    CutFile *file = (CutFile *)cookie;
    const size_t end = std::min(file->left, file->bytes.size());
    const size_t at = std::min((size_t)file->position, end);
    const size_t count = std::min(size, end - at);
    if (count == 0 && file->fails && at < file->bytes.size()) {
        errno = EIO;
        return -1;
    }
    memcpy(bytes, file->bytes.data() + at, count);
    file->position += (off64_t)count;
    return (ssize_t)count;
}

static int SeekCut(void *cookie, off64_t *offset, int whence)
{
    CutFile *file = (CutFile *)cookie;
    const off64_t from = whence == SEEK_SET   ? 0
                         : whence == SEEK_CUR ? file->position
                                              : (off64_t)file->bytes.size();
    *offset = file->position = from + *offset;
    return 0;
}

TEST(ChangeUnderneath, OfASixteenBitFileIsToldAnywhere)
{
    const Bytes whole = BuildTwo(true);
    for (const bool fails : {false, true})
        for (size_t left = 0; left <= whole.size(); left += left < 600 ? 1 : 97) {
            CutFile cut = {whole, left, fails, 0};
            FILE *file = fopencookie(&cut, "rb", {ReadCut, nullptr, SeekCut, nullptr});
            const ProbeOutcome outcome = ProbeFile(nullptr, file);
            EXPECT_EQ(outcome == ProbeRead, NotedFailure() == FailureNone) << left;
            EXPECT_EQ(outcome == ProbeRead, openCatalog.count == 2) << left;
            ReleaseCatalog(&openCatalog);
            fclose(file);
        }
}

// The saved files by name, without what no run has finished.
static std::map<std::string, Bytes> SavedIn(const fs::path &folder)
{
    std::map<std::string, Bytes> saved;
    for (const auto &entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = entry.path().lexically_relative(folder).string();
        if (entry.is_regular_file() && name.find(".unfinished-") == std::string::npos)
            saved[name] = ReadFile(entry.path());
    }
    return saved;
}

// Starts quillmoor-cli on the folder's file, and ends it with a signal after a while; 0: not at
// all.
static int SaveUntil(const TempFolder &folder, int signal, std::chrono::microseconds delay)
{
    const pid_t child = fork();
    if (child == 0) {
        const int null = open("/dev/null", O_RDWR);
        for (const int told : {STDOUT_FILENO, STDERR_FILENO})
            dup2(null, told);
        execl(BUILD_FOLDER "/quillmoor-cli", "quillmoor-cli", "save", "--force", "--output",
              folder.Path("out").c_str(), folder.Path("many.dll").c_str(), nullptr);
        _exit(99);
    }
    std::this_thread::sleep_for(delay);
    if (signal != 0)
        kill(child, signal);
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

TEST(EndedSave, LeavesWholeFilesAndTheNextRunGoesOn)
{
    const TempFolder folder;
    ExecutableDescription description;
    for (int i = 0; i < 40; i++)
        description.resources.push_back({i % 2 ? 2 : 10, i, Bytes(2000, (unsigned char)i)});
    folder.Write("many.dll", BuildPe(description).bytes);
    // How long a run takes at its quickest: one that was held up once tells nothing of the others.
    std::chrono::microseconds whole = std::chrono::hours(1);
    const auto saveWhole = [&folder, &whole] {
        const auto start = Clock::now();
        const int status = SaveUntil(folder, 0, {});
        whole = std::min(
            whole, std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start));
        return status;
    };
    ASSERT_EQ(saveWhole(), 0);
    const std::map<std::string, Bytes> all = SavedIn(folder.path / "out");
    ASSERT_EQ(all.size(), 40u);
    size_t ended = 0;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGKILL})
        for (int moment = 0; moment < 6; moment++) {
            // Every other time into folders that are there already.
            fs::remove_all(folder.path / "out");
            fs::create_directory(folder.path / "out");
            if (moment % 2)
                saveWhole();
            const int status = SaveUntil(folder, signal, whole * (moment + 1) / 6);
            const std::map<std::string, Bytes> saved = SavedIn(folder.path / "out");
            ended += status != 0;
            for (const auto &[name, bytes] : saved)
                EXPECT_EQ(bytes, all.at(name)) << name;
            const std::vector<std::string> left = folder.Files();
            const bool isClean = std::none_of(left.begin(), left.end(), [](const auto &name) {
                return name.find(".unfinished-") != std::string::npos;
            });
            EXPECT_TRUE(isClean || WIFSIGNALED(status));
            // What nobody reads does not end it.
            EXPECT_TRUE(signal != SIGPIPE || WIFSIGNALED(status) || status == 0);
            EXPECT_EQ(saveWhole(), 0);
            EXPECT_EQ(SavedIn(folder.path / "out"), all);
        }
    EXPECT_GT(ended, 0u);
}
