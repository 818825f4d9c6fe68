// quillmoor-cli when memory or the disk fails it: what failed is told, what is there is whole.
#include "cli/command_line.h"
#include "samples/builder/builder.h"
#include "tests/faults/failing.h"
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
        static char buffers[2][BUFSIZ]; // that no allocation makes
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
};

static BuiltExecutable BuildKinds()
{
    return BuildPe({.resources = {{2, 10, MakeDib(MakePicture(3, 3, 0xFF112233), 24)},
                                  {3, 1, MakeIconImage(MakePicture(4, 4, 0xFF112233), 32)},
                                  {6, 7, MakeStringBlock({u"Hello, all"})},
                                  {10, u"T\u00C9", {'R', 'A', 'W'}},
                                  {10, u"t\u00E9", {'R', 'A', 'W', '2'}}}});
}

// Runs a command with each call failing once. A run that says it is done has done all; another says
// why; files under their names are whole, and nothing unfinished is left, in either case.
static void CheckCommand(const char *name, Failing kind, std::vector<std::string> arguments,
                         bool isOutputThere)
{
    FailingRun run;
    const std::string file = run.folder.Write("kinds.dll", BuildKinds().bytes);
    for (std::string &argument : arguments)
        argument = argument == "FILE" ? file : argument == "OUT" ? run.output.string() : argument;
    const auto prepare = [&] {
        fs::remove_all(run.output);
        if (isOutputThere)
            for (const char *made : {"BITMAP", "ICON", "STRING TABLE", "BINARY DATA"})
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
    const int count = FailEachOnce(
        kind, [&] { run.status = RunCommandLine(arguments, run.out, run.err); },
        [&] {
            run.End();
            const Tree made = TreeOf(run.output);
            // A folder that cannot be given its name stays, and is named.
            const std::string told = run.Err(), before = "is left as ";
            const size_t at = told.find(before);
            const std::string left = at == std::string::npos
                                         ? "nothing"
                                         : told.substr(at + before.size(), strlen(".unfinished-1"));
            for (const auto &[path, bytes] : made)
                EXPECT_TRUE((whole.contains(path) && whole.at(path) == bytes) ||
                            path.starts_with(left))
                    << path;
            if (run.status == 0) {
                EXPECT_EQ(made, whole);
                EXPECT_EQ(run.Out(), listed);
            } else {
                EXPECT_EQ(run.status, 1);
                EXPECT_EQ(run.Err().find("quillmoor-cli: "), 0u) << run.Err();
                tellings++;
            }
            prepare();
        });
    run.End();
    printf("%s: %d failure points, %d told\n", name, count, tellings);
    EXPECT_GT(tellings, 0);
}

TEST(CommandLineFaults, ListSurvivesEachAllocation)
{
    CheckCommand("list", Failing::Allocations, {"list", "FILE"}, false);
    CheckCommand("list --json", Failing::Allocations, {"list", "--json", "FILE"}, false);
}

TEST(CommandLineFaults, SaveSurvivesEachAllocation)
{
    CheckCommand("save", Failing::Allocations, {"save", "--output", "OUT", "FILE"}, false);
    CheckCommand("save into folders", Failing::Allocations, {"save", "--output", "OUT", "FILE"},
                 true);
}

TEST(CommandLineFaults, EachCallOnFilesIsSurvived)
{
    CheckCommand("list, files", Failing::Files, {"list", "FILE"}, false);
    CheckCommand("save, files", Failing::Files, {"save", "--output", "OUT", "FILE"}, false);
    CheckCommand("save into folders, files", Failing::Files, {"save", "--output", "OUT", "FILE"},
                 true);
}
