#include "cli/command_line.h"
#include "cli/file_names.h"
#include "platform/files.h"
#include "samples/builder/builder.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using namespace std::literals;
using Lines = std::vector<std::string>;

struct ToolRun {
    ExitStatus status;
    std::string out;
    std::string err;
};

static ToolRun RunTool(const TempFolder &folder, const Lines &arguments)
{
    ToolRun run;
    const fs::path outPath = folder.path / "standard output",
                   errPath = folder.path / "standard error";
    FILE *out = fopen(outPath.string().c_str(), "wb");
    FILE *err = fopen(errPath.string().c_str(), "wb");
    run.status = RunCommandLine(arguments, out, err);
    fclose(out);
    fclose(err);
    for (const auto &[path, text] : {std::pair(outPath, &run.out), {errPath, &run.err}}) {
        const Bytes bytes = ReadFile(path);
        text->assign(bytes.begin(), bytes.end());
        fs::remove(path);
    }
    return run;
}

static BuiltExecutable BuildFour()
{
    return BuildPe({.resources = {{2, 10, Text("ten")},
                                  {2, 2, Text("two")},
                                  {10, u"T\u00C9\u4E00", Text("RIFF????WAVE")},
                                  {6, 7, MakeStringBlock({u"Hello"})}}});
}

static const char *const fourListed = "BINARY DATA\n"
                                      "  T\xC3\x89? (12 bytes)\n"
                                      "BITMAP\n"
                                      "  10 (3 bytes)\n"
                                      "  2 (3 bytes)\n"
                                      "STRING TABLE\n"
                                      "  7 (42 bytes)\n";

TEST(ListCommand, PrintsTheTree)
{
    const TempFolder folder;
    const std::string path = folder.Write("a\xC3\xA9 b.dll", BuildFour().bytes);
    const ToolRun run = RunTool(folder, {"list", path});
    EXPECT_EQ(run.status, ExitDone);
    EXPECT_EQ(run.out, fourListed);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(RunTool(folder, {"list", path, path}).out,
              path + "\n" + fourListed + path + "\n" + fourListed);
}

TEST(ListCommand, PrintsOneJsonObjectALine)
{
    const TempFolder folder;
    const BuiltExecutable built = BuildFour();
    const std::string path = folder.Write("four.dll", built.bytes);
    const ToolRun run = RunTool(folder, {"list", "--json", path});
    EXPECT_TRUE(run.out.starts_with("{\"index\":0,\"category\":2,\"label\":\"BITMAP\",\"name\":"
                                    "\"2\",\"size\":3,\"fileOffset\":" +
                                    std::to_string(built.resources[1].data) +
                                    ",\"isWave\":false}\n"))
        << run.out;
    EXPECT_NE(run.out.find("\"name\":\"T\xC3\x89?\",\"size\":12"), std::string::npos);
    EXPECT_NE(run.out.find("\"isWave\":true"), std::string::npos);
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 4);
    const ToolRun two = RunTool(folder, {"list", "--json", path, path});
    EXPECT_NE(two.out.find("four.dll\"}\n"), std::string::npos);
}

TEST(ListCommand, TellsWhyAFileIsRefusedAndGoesOn)
{
    const TempFolder folder;
    BuiltExecutable damaged = BuildFour();
    PutU32(damaged.bytes, damaged.resources[1].dataEntry + 4, 0x7FFFFFFF);
    const std::string good = folder.Write("good.dll", BuildFour().bytes);
    const std::string bad = folder.Write("bad.dll", damaged.bytes);
    const std::string text = folder.Write("text.txt", Text("text"));
    const std::string device = pathSeparator == '/' ? "/dev/null" : "NUL";
    const ToolRun run = RunTool(folder, {"list", text, device, bad, good, folder.Path("missing")});
    EXPECT_EQ(run.status, ExitFailed);
    EXPECT_EQ(run.out, good + "\n" + fourListed);
    std::string told;
    for (const auto &[file, reason] :
         {std::pair(text, "It is not an executable: it does not begin with the letters MZ.\n"s),
          {device, "It cannot be opened: Not a regular file.\n"},
          {bad, "The file you have attempted to open appears to be corrupt or there was an error "
                "allocating memory.\n"},
          {bad, "The resource data at offset " + std::to_string(damaged.resources[1].data) +
                    " do not lie in the file.\n"},
          {folder.Path("missing"), "It cannot be opened: "}})
        told += "quillmoor-cli: " + file + ": " + reason;
    EXPECT_EQ(run.err.substr(0, told.size()), told);

    const ToolRun salvaged = RunTool(folder, {"list", "--salvage", bad});
    EXPECT_EQ(salvaged.status, ExitDone);
    EXPECT_NE(salvaged.out.find("  10 (3 bytes)\n"), std::string::npos);
    EXPECT_NE(salvaged.err.find("The file is damaged"), std::string::npos);
}

TEST(CommandLine, TellsWrongUsageFromHelp)
{
    const TempFolder folder;
    for (const Lines &wrong :
         {Lines{}, Lines{"list"}, Lines{"save"}, Lines{"print", "x"},
          Lines{"list", "--colour", "x"}, Lines{"save", "--category", "menu", "x"}}) {
        const ToolRun run = RunTool(folder, wrong);
        EXPECT_EQ(run.status, ExitUsage);
        EXPECT_EQ(run.out, "");
        EXPECT_NE(run.err, "");
    }
    // As the About box tells it, and the man pages.
    EXPECT_EQ(RunTool(folder, {"--version"}).out, "quillmoor-cli 3.0a\n");
    for (const char *page : {"packaging/quillmoor.1", "packaging/quillmoor-cli.1"}) {
        const Bytes text = ReadFile(fs::path(BUILD_FOLDER) / page);
        EXPECT_EQ(std::string(text.begin(), text.end()).find("\"Quillmoor 3.0a\"") !=
                      std::string::npos,
                  pathSeparator == '/');
    }
    for (const Lines &right : {Lines{"--help"}, Lines{"save", "--help"}}) {
        const ToolRun run = RunTool(folder, right);
        EXPECT_EQ(run.status, ExitDone);
        EXPECT_NE(run.out, "");
        EXPECT_EQ(run.err, "");
    }
}

TEST(SaveCommand, WritesWhatIsAskedFor)
{
    const TempFolder folder;
    const std::string path = folder.Write("four.dll", BuildFour().bytes);
    EXPECT_EQ(RunTool(folder, {"save", "--output", folder.Path("all/of it"), path}).status,
              ExitDone);
    EXPECT_EQ(folder.Files(),
              (Lines{"all/of it/BINARY DATA/T\xC3\x89%3F.WAV", "all/of it/BITMAP/10.BMP",
                     "all/of it/BITMAP/2.BMP", "all/of it/STRING TABLE/7.TXT", "four.dll"}));

    fs::remove_all(folder.path / "all");
    EXPECT_EQ(RunTool(folder, {"save", "--output", folder.Path("some"), "--category", "bitmap",
                               "--category", "string", path, "2", "7", "t\xC3\xA9?"})
                  .status,
              ExitFailed); // the sound's name matches, but its category is not asked for
    EXPECT_EQ(folder.Files(), (Lines{"four.dll", "some/BITMAP/2.BMP", "some/STRING TABLE/7.TXT"}));
    const ToolRun unknown =
        RunTool(folder, {"save", "--output", folder.Path("none"), path, "2", "unknown"});
    EXPECT_EQ(unknown.status, ExitFailed);
    EXPECT_NE(unknown.err.find("named unknown"), std::string::npos);
}

TEST(SaveCommand, KeepsWhatIsWholeOfADamagedFileWhenAskedTo)
{
    const TempFolder folder;
    BuiltExecutable damaged = BuildFour();
    PutU32(damaged.bytes, damaged.resources[1].dataEntry + 4, 0x7FFFFFFF);
    const std::string bad = folder.Write("bad.dll", damaged.bytes);
    EXPECT_EQ(RunTool(folder, {"save", "--output", folder.Path("out"), bad}).status, ExitFailed);
    EXPECT_EQ(folder.Files(), Lines{"bad.dll"});
    const ToolRun run = RunTool(folder, {"save", "--salvage", "--output", folder.Path("out"), bad});
    EXPECT_EQ(run.status, ExitDone);
    EXPECT_NE(run.err.find("what could be read is kept. The resource data at offset"),
              std::string::npos);
    EXPECT_EQ(folder.Files(), (Lines{"bad.dll", "out/BINARY DATA/T\xC3\x89%3F.WAV",
                                     "out/BITMAP/10.BMP", "out/STRING TABLE/7.TXT"}));
}

TEST(SaveCommand, TellsWhatCannotBeWrittenAndLeavesNothingOfIt)
{
    const TempFolder folder;
    const std::string path = folder.Write("four.dll", BuildFour().bytes);
    const ToolRun noFolder = RunTool(folder, {"save", "--output", path, path});
    EXPECT_EQ(noFolder.status, ExitFailed);
    EXPECT_NE(noFolder.err.find("four.dll: The folder cannot be used: "), std::string::npos);
    folder.Write("out/BITMAP", Text("a file"));
    const ToolRun oneLess = RunTool(folder, {"save", "--output", folder.Path("out"), path});
    EXPECT_EQ(oneLess.status, ExitFailed);
    EXPECT_NE(oneLess.err.find(": BITMAP: The folder cannot be used: "), std::string::npos);
    EXPECT_EQ(folder.Files(), (Lines{"four.dll", "out/BINARY DATA/T\xC3\x89%3F.WAV", "out/BITMAP",
                                     "out/STRING TABLE/7.TXT"}));
    if (!LimitFileSize(13))
        GTEST_SKIP() << "this system has no such limit";
    const ToolRun full =
        RunTool(folder, {"save", "--output", folder.Path("new"), "--category", "bitmap", path});
    LimitFileSize(-1);
    EXPECT_EQ(full.status, ExitFailed);
    EXPECT_EQ(folder.Files(), (Lines{"four.dll", "out/BINARY DATA/T\xC3\x89%3F.WAV", "out/BITMAP",
                                     "out/STRING TABLE/7.TXT"}));
}

TEST(SaveCommand, ReplacesOnlyWhenForced)
{
    const TempFolder folder;
    const std::string path = folder.Write("four.dll", BuildFour().bytes);
    const Lines save = {"save", "--output", folder.Path("out"), path, "2"};
    ASSERT_EQ(RunTool(folder, save).status, ExitDone);
    folder.Write("out/BITMAP/2.BMP", Text("mine"));
    const ToolRun again = RunTool(folder, save);
    EXPECT_EQ(again.status, ExitFailed);
    EXPECT_NE(again.err.find("2.BMP: The file is there already"), std::string::npos);
    EXPECT_EQ(ReadFile(folder.path / "out/BITMAP/2.BMP"), Text("mine"));
    Lines forced = save;
    forced.push_back("--force");
    EXPECT_EQ(RunTool(folder, forced).status, ExitDone);
    EXPECT_EQ(ReadFile(folder.path / "out/BITMAP/2.BMP").size(), 17u);
    EXPECT_EQ(folder.Files(), (Lines{"four.dll", "out/BITMAP/2.BMP"})); // nothing unfinished left
}

TEST(SaveCommand, LeavesTheFolderThroughNoNameAndNoLink)
{
    const TempFolder folder;
    const std::string path =
        folder.Write("hostile.dll", BuildPe({.resources = {{2, u"../../up", Text("a")},
                                                           {2, u"/abs", Text("b")},
                                                           {2, u"..", Text("c")},
                                                           {2, u"C:\\x", Text("d")},
                                                           {2, u"CON", Text("e")},
                                                           {3, 1, Text("icon")}}})
                                        .bytes);
    fs::create_directories(folder.path / "out");
    fs::create_directories(folder.path / "elsewhere");
    std::error_code noLinks;
    fs::create_directory_symlink(folder.path / "elsewhere", folder.path / "out/ICON", noLinks);
    const ToolRun run = RunTool(folder, {"save", "--force", "--output", folder.Path("out"), path});
    EXPECT_EQ(run.status, noLinks ? ExitDone : ExitFailed);
    EXPECT_TRUE(fs::is_empty(folder.path / "elsewhere"));
    Lines files = folder.Files();
    std::erase_if(files, [](const std::string &name) { return !name.ends_with(".BMP"); });
    EXPECT_EQ(files,
              (Lines{"out/BITMAP/%2Fabs.BMP", "out/BITMAP/%43ON.BMP", "out/BITMAP/..%2F..%2Fup.BMP",
                     "out/BITMAP/...BMP", "out/BITMAP/C%3A%5Cx.BMP"}));
}

TEST(SaveCommand, ReplacesALinkItselfAndNotWhatItLeadsTo)
{
    const TempFolder folder;
    const std::string path = folder.Write("four.dll", BuildFour().bytes);
    folder.Write("precious", Text("precious"));
    fs::create_directories(folder.path / "out/BITMAP");
    std::error_code noLinks;
    fs::create_symlink(folder.path / "precious", folder.path / "out/BITMAP/2.BMP", noLinks);
    if (noLinks)
        GTEST_SKIP() << "this system makes no links";
    EXPECT_EQ(
        RunTool(folder, {"save", "--force", "--output", folder.Path("out"), path, "2"}).status,
        ExitDone);
    EXPECT_EQ(ReadFile(folder.path / "precious"), Text("precious"));
    EXPECT_FALSE(fs::is_symlink(folder.path / "out/BITMAP/2.BMP"));
}

TEST(FileNames, AreTakenByBothSystemsAndToldApart)
{
    for (const auto &[name, encoded] : {std::pair("a<b>:\"|?*", "a%3Cb%3E%3A%22%7C%3F%2A"),
                                        {"tab\there", "tab%09here"},
                                        {"nul", "%6Eul"},
                                        {"Com1.x", "%43om1.x"},
                                        {"COM10", "COM10"},
                                        {"100%", "100%"},
                                        {"\xC3\x89", "\xC3\x89"}})
        EXPECT_EQ(EncodeFileName(name), encoded);

    NamesInFolder folder;
    EXPECT_EQ(NextFileName(&folder, "A", ".BMP"), "A.BMP");
    EXPECT_EQ(NextFileName(&folder, "a (2)", ".BMP"), "a (2).BMP");
    EXPECT_EQ(NextFileName(&folder, "a", ".BMP"), "a (3).BMP");
    EXPECT_EQ(NextFileName(&folder, "\xC3\x89", ".BMP"), "\xC3\x89.BMP");
    EXPECT_EQ(NextFileName(&folder, "\xC3\xA9", ".BMP"), "\xC3\xA9 (2).BMP");

    std::string longName = std::string(249, 'n');
    for (int i = 0; i < 10; i++)
        longName += "\xC3\xA9";
    EXPECT_EQ(NextFileName(&folder, longName, ".ICO"),
              std::string(249, 'n') + "\xC3\xA9" + ".ICO"); // 255 bytes, no half character
    EXPECT_EQ(NextFileName(&folder, longName, ".ICO"), std::string(247, 'n') + " (2).ICO");
    EXPECT_EQ(NextFileName(&folder, std::string(250, 'x') + "%2F", ".ICO"),
              std::string(250, 'x') + ".ICO"); // no half escape
}
