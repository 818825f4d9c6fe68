// What the files that cost most come to, held against the table of bounds in docs/performance.md.
#include "cli/command_line.h"
#include "exe/catalog.h"
#include "tests/support/temp_folder.h"
#include "tests/support/worst_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

// Does the work, in a process of its own where that tells its memory. Returns the most bytes that
// it held, 0 where nobody knows.
static double MemoryOf(const std::function<void()> &work)
{
#if defined _WIN32 || defined __SANITIZE_ADDRESS__
    work();
    return 0;
#else
    rusage before, after;
    const pid_t child = fork();
    if (child == 0) {
        getrusage(RUSAGE_SELF, &before);
        work();
        getrusage(RUSAGE_SELF, &after);
        const long kilobytes = after.ru_maxrss - before.ru_maxrss;
        _exit((int)std::min(kilobytes / 1024, 255L));
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? (WEXITSTATUS(status) + 1.0) * 1024 * 1024 : 1e30;
#endif
}

static double SizeOf(const fs::path &path)
{
    double size = 0;
    for (const auto &entry : fs::recursive_directory_iterator(path))
        size += entry.is_regular_file() ? (double)entry.file_size() : 0;
    return size;
}

TEST(Bounds, HoldForTheFilesThatCostMost)
{
    const double mebi = 1 << 20;
    const Bytes shared(65536, 'x'), none, strings = MakeWorstStrings(65536);
    struct Case {
        const char *kind;
        Lines command;
        Bytes file;
        double mostOutput, mostMemory; // bytes for each byte of file
        double fixedMemory = 8 * 1024 * 1024;
    };
    const Case cases[] = {
        {"PE names, as a tree", {"list"}, MakeWorstPe(10, 20000, none), 100, 100},
        {"PE names, as JSON", {"list", "--json"}, MakeWorstPe(10, 20000, none), 220, 48},
        {"NE names, as a tree", {"list"}, MakeWorstNe(16000), 64, 100},
        {"NE names, as JSON", {"list", "--json"}, MakeWorstNe(16000), 138, 70},
        {"PE survey, as a tree", {"list", "--all"}, MakeWorstPe(10, 20000, none), 100, 48},
        {"NE survey, as a tree", {"list", "--all"}, MakeWorstNe(16000), 64, 48},
        {"PE data", {"list"}, MakeWorstPe(10, 1024, shared), 11, 2, 72 * mebi},
        {"PE texts", {"save"}, MakeWorstPe(6, 100, strings), 300, 100},
    };
    for (const Case &row : cases) {
        SCOPED_TRACE(row.kind);
        const TempFolder folder;
        const double size = (double)row.file.size();
        Lines command = row.command;
        command.push_back(folder.Write("worst", row.file));
        fs::create_directories(folder.path / "out");
        if (command[0] == "save")
            command.insert(command.end(), {"--output", folder.Path("out")});
        const double memory = MemoryOf([&] {
            FILE *out = fopen((folder.path / "out/listed").string().c_str(), "wb");
            RunCommandLine(command, out, out);
            fclose(out);
        });
        const double output = SizeOf(folder.path / "out");
        EXPECT_LE(output, row.mostOutput * size);
        EXPECT_GE(output, row.mostOutput * size * 0.9); // it is the worst
        EXPECT_LE(memory, row.mostMemory * size + row.fixedMemory);
    }
}
