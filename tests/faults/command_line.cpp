// quillmoor-cli when memory or the disk fails it: what failed is told, what is there is whole.
#include "cli/command_line.h"
#include "samples/builder/builder.h"
#include "tests/faults/failing.h"
#include "tests/faults/handles.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>

namespace fs = std::filesystem;

typedef std::map<std::string, Bytes> Tree; // a folder's files

static Tree TreeOf(const fs::path &folder)
{
    Tree tree;
    if (fs::exists(folder))
        for (const auto &entry : fs::recursive_directory_iterator(folder))
            tree[entry.path().lexically_relative(folder).string()] =
                entry.is_regular_file() ? ReadFile(entry.path()) : Bytes();
    return tree;
}

// One command's run.
struct FailingRun {
    TempFolder folder;
    fs::path output = folder.path / "out";
    FILE *out = nullptr, *err = nullptr;
    int status = 0;
    std::vector<std::string> arguments;

    void Begin()
    {
        out = fopen(folder.Path("standard output").c_str(), "wb");
        err = fopen(folder.Path("standard error").c_str(), "wb");
        static char buffers[2][BUFSIZ];      // that no allocation makes
        static const int free = fileno(err); // a file that a command leaves open takes its place
        EXPECT_EQ(fileno(err), free);
        setvbuf(out, buffers[0], _IOFBF, BUFSIZ);
        setvbuf(err, buffers[1], _IOFBF, BUFSIZ);
    }

    void End()
    {
        fclose(out);
        fclose(err);
    }

    Bytes Out() const
    {
        return ReadFile(folder.path / "standard output");
    }

    std::string Err() const
    {
        const Bytes bytes = ReadFile(folder.path / "standard error");
        return std::string(bytes.begin(), bytes.end());
    }

    // On standard error, or in a listing's JSON object.
    bool IsTold(const char *reason) const
    {
        const Bytes bytes = Out();
        return (Err() + std::string(bytes.begin(), bytes.end())).find(reason) != std::string::npos;
    }
};

static ExecutableDescription DescribeKinds()
{
    // More than is read with what lies around it.
    const Bytes icon = MakeIconImage(MakePicture(32, 32, 0xFF112233), 32);
    return {.resources = {{2, 10, MakeDib(MakePicture(3, 3, 0xFF112233), 24)},
                          {3, 1, icon},
                          {3, 2, icon},
                          {14, 1, MakeIconGroup({{32, 32, 32, icon.size(), 1}})},
                          {16, 1, MakeVersion("a.b", "c", true)},
                          {6, 7, MakeStringBlock({u"Hello, all"})},
                          {10, u"T\u00C9", {'R', 'A', 'W'}},
                          {10, u"t\u00E9", {'R', 'A', 'W', '2'}}}};
}

// A command, and the folders of OUT that are there before it runs.
struct Command {
    const char *name;
    std::vector<std::string> arguments; // that begin with FILE, NE and OUT stand for the paths
    std::vector<const char *> folders = {};
};

static const std::vector<const char *> categories = {"BITMAP", "ICON", "STRING TABLE",
                                                     "BINARY DATA"};

static const std::vector<const char *> types = {"BITMAP", "GROUP_ICON", "ICON",
                                                "RCDATA", "STRING",     "VERSION"};

static const Command commands[] = {
    {"list", {"list", "FILE"}},
    {"list --json", {"list", "--json", "FILE"}},
    {"list --all", {"list", "--all", "FILE"}},
    {"list --all --json", {"list", "--all", "--json", "FILE"}},
    {"list, 16 bits", {"list", "NE"}},
    {"save", {"save", "--output", "OUT", "FILE"}},
    {"save into folders", {"save", "--output", "OUT", "FILE"}, categories},
    {"save --utf8", {"save", "--utf8", "--output", "OUT", "FILE"}},
    {"save --all", {"save", "--all", "--output", "OUT", "FILE"}},
    {"save --all, 16 bits", {"save", "--all", "--output", "OUT", "NE"}},
    {"save --all into folders", {"save", "--all", "--output", "OUT", "FILE"}, types},
    {"icon", {"icon", "FILE", "OUT/icon.ico"}, {"."}},
    {"icon --size", {"icon", "--size", "4", "FILE", "OUT/icon.png"}, {"."}},
    {"strings", {"strings", "FILE"}},
    {"strings --json", {"strings", "--json", "FILE"}},
    {"page", {"page", "FILE", "-o", "OUT/page.html"}, {"."}},
    {"page, printed", {"page", "FILE", "-o", "-"}},
    {"icon, printed", {"icon", "FILE", "-"}},
};

// Runs a command with each call failing once. A run that says it is done has done all; another says
// why; files under their names are whole, and nothing unfinished is left, in either case.
static void CheckCommand(const Command &command, Failing kind)
{
    SCOPED_TRACE(command.name);
    FailingRun run;
    const std::string file = run.folder.Write("kinds.dll", BuildPe(DescribeKinds()).bytes),
                      file16 = run.folder.Write("kinds.exe", BuildNe(DescribeKinds()).bytes);
    std::vector<std::string> arguments = command.arguments;
    for (std::string &argument : arguments)
        if (argument.starts_with("FILE"))
            argument = file;
        else if (argument == "NE")
            argument = file16;
        else if (argument.starts_with("OUT"))
            argument.replace(0, strlen("OUT"), run.output.string());
    const auto prepare = [&] {
        fs::remove_all(run.output);
        for (const char *made : command.folders)
            fs::create_directories(run.output / made);
        run.Begin();
    };
    prepare();
    ASSERT_EQ(RunCommandLine(arguments, run.out, run.err), 0);
    run.End();
    const Tree whole = TreeOf(run.output);
    const Bytes listed = run.Out();
    prepare();
    int tellings = 0;
    long kept = 0; // allocations
    const int count = FailEachOnce(
        kind,
        [&] {
            const long before = CountLiveAllocations();
            run.status = RunCommandLine(arguments, run.out, run.err);
            kept = CountLiveAllocations() - before;
        },
        [&] {
            EXPECT_EQ(kept, 0);
            EXPECT_EQ(liveHandles.blocks, 0);
            run.End();
            const Tree made = TreeOf(run.output);
            // A folder that cannot be given its name stays, and is named.
            const std::string told = run.Err(), before = "is left as ";
            const size_t at = told.find(before);
            const std::string left = at == std::string::npos
                                         ? "nothing"
                                         : told.substr(at + before.size(), strlen(".unfinished-1"));
            // A picture stands alone when its group cannot be read.
            for (const auto &[path, bytes] : made)
                EXPECT_TRUE((whole.contains(path) && whole.at(path) == bytes) ||
                            path.starts_with(left) || (run.status != 0 && path == "ICON/1.ico"))
                    << path;
            if (run.status == 0) {
                EXPECT_EQ(made, whole);
                EXPECT_EQ(run.Out(), listed);
            } else {
                EXPECT_EQ(run.status, 1);
                EXPECT_TRUE(run.IsTold(kind == Failing::Allocations ? "memory" : "not be "))
                    << run.Err();
                tellings++;
            }
            prepare();
        });
    run.End();
    printf("%s, %s: %d failure points, %d told\n", command.name,
           kind == Failing::Allocations ? "allocations" : "files", count, tellings);
    EXPECT_GT(tellings, 0);
}

TEST(CommandLineFaults, EachAllocationIsSurvived)
{
    for (const Command &command : commands)
        CheckCommand(command, Failing::Allocations);
}

TEST(CommandLineFaults, EachCallOnFilesIsSurvived)
{
    for (const Command &command : commands)
        CheckCommand(command, Failing::Files);
}
