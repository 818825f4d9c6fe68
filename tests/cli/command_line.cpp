#include "cli/command_line.h"
#include "cli/file_names.h"
#include "platform/files.h"
#include "samples/builder/builder.h"
#include "tests/cli/command_files.h"
#include "tests/support/transcript.h"
#include "tests/support/worst_files.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <sstream>

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
    static const int free = fileno(err); // a file that a command leaves open takes its place
    EXPECT_EQ(fileno(err), free) << "before " << arguments[0];
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

// The words of a command; those between quotes are one.
static Lines WordsOf(const std::string &command)
{
    Lines words(1);
    bool isQuoted = false;
    for (const char letter : command)
        if (letter == '\'')
            isQuoted = !isQuoted;
        else if (letter == ' ' && !isQuoted)
            words.push_back("");
        else
            words.back() += letter;
    return words;
}

// A page without its head.
static std::string BodyOf(const std::string &text)
{
    return text.starts_with("<!DOCTYPE") ? text.substr(text.find("<body>")) : text;
}

// What is printed, without the system's own reasons, and where files are named its separators.
static Lines Printed(const std::string &text, const std::string &before)
{
    static const std::regex reason("(cannot be (?:opened|used)): [^.]*\\.");
    static const std::regex named("^((No|[0-9]+) files? in |<(h2|li|tr)>)");
    Lines lines;
    std::istringstream all(std::regex_replace(text, reason, "$1: ..."));
    for (std::string line; std::getline(all, line);) {
        if (pathSeparator == '\\' && (before == "! " || std::regex_search(line, named)))
            std::replace(line.begin(), line.end(), '\\', '/');
        lines.push_back(before + line);
    }
    return lines;
}

static std::map<std::string, Bytes> ContentOf(const TempFolder &folder)
{
    std::map<std::string, Bytes> files;
    for (const std::string &name : folder.Files())
        files[name] = ReadFile(folder.path / fs::path(std::u8string(name.begin(), name.end())));
    return files;
}

static void TellChanges(const std::map<std::string, Bytes> &before,
                        const std::map<std::string, Bytes> &now, Lines *told)
{
    for (const auto &[name, bytes] : now)
        if (before.count(name) == 0 || before.at(name) != bytes)
            told->push_back("> " + name + ": " + Described(bytes));
    for (const auto &[name, bytes] : before)
        if (now.count(name) == 0)
            told->push_back("> " + name + " is gone");
}

static void RunCommand(const TempFolder &folder, const std::string &command, Lines *told)
{
    const std::map<std::string, Bytes> before = ContentOf(folder);
    const Lines words = WordsOf(command);
    if (words[0] == "write") {
        folder.Write(words[1], Text(words[2].c_str()));
    } else {
        const ToolRun run = RunTool(folder, words);
        for (const Lines &lines : {Printed(BodyOf(run.out), "  "), Printed(run.err, "! ")})
            told->insert(told->end(), lines.begin(), lines.end());
        told->push_back("= " + std::to_string(run.status));
    }
    TellChanges(before, ContentOf(folder), told);
}

// Each command of the text is given again, in a folder of the files above. Below it stands what is
// printed ("!" before what is a complaint), the exit status, and the files that it changes.
TEST(CommandLine, DoesWhatItsTranscriptTells)
{
    const fs::path before = fs::current_path();
    const TempFolder folder;
    WriteCommandFiles(folder);
    fs::current_path(folder.path);
    Lines told;
    for (const std::string &line : LinesOf(CLI_FOLDER "/commands.txt")) {
        if (line.starts_with("$ ") || line.starts_with("# "))
            told.insert(told.end(), {"", line});
        if (line.starts_with("$ "))
            RunCommand(folder, line.substr(2), &told);
    }
    fs::current_path(before);
    FILE *nothing = tmpfile();
    EXPECT_EQ(RunCommandLine({}, nothing, nothing), ExitUsage);
    fclose(nothing);
    ExpectTold(told, CLI_FOLDER "/commands.txt", TOLD_FOLDER "/commands.told.txt");
}

// The transcript tells this one too.
TEST(CommandLine, TheManPagesAreOfThisVersion)
{
    for (const char *page : {"packaging/quillmoor.1", "packaging/quillmoor-cli.1"}) {
        const Bytes text = ReadFile(fs::path(BUILD_FOLDER) / page);
        EXPECT_EQ(
            std::string(text.begin(), text.end()).find("\"Quillmoor " QUILLMOOR_VERSION "\"") !=
                std::string::npos,
            pathSeparator == '/');
    }
}

TEST(SaveCommand, FollowsNoLinkAndReplacesTheLinkItself)
{
    const TempFolder folder;
    WriteCommandFiles(folder);
    const std::string path = folder.Path("four.dll");
    folder.Write("precious", Text("precious"));
    fs::create_directories(folder.path / "out/BITMAP");
    fs::create_directories(folder.path / "elsewhere");
    std::error_code noLinks;
    fs::create_symlink(folder.path / "precious", folder.path / "out/BITMAP/2.BMP", noLinks);
    fs::create_directory_symlink(folder.path / "elsewhere", folder.path / "out/BINARY DATA",
                                 noLinks);
    if (noLinks)
        GTEST_SKIP() << "this system makes no links";
    EXPECT_EQ(RunTool(folder, {"save", "--force", "--output", folder.Path("out"), path}).status,
              ExitFailed);
    const fs::path before = fs::current_path();
    fs::current_path(folder.path);
    fs::create_directory_symlink(folder.path / "elsewhere", "four.dll.resources");
    EXPECT_EQ(RunTool(folder, {"save", "four.dll"}).status, ExitFailed);
    fs::current_path(before);
    EXPECT_TRUE(fs::is_empty(folder.path / "elsewhere"));
    EXPECT_EQ(ReadFile(folder.path / "precious"), Text("precious"));
    EXPECT_FALSE(fs::is_symlink(folder.path / "out/BITMAP/2.BMP"));
}

// Blocks of empty strings come to nothing, but are read over and over; sounds are not only read.
TEST(CommandLine, TakesNoMoreOfAFileThanItMayHave)
{
    const TempFolder folder;
    Bytes sound = Text("RIFF????WAVE"), bitmap = MakeDib(MakePicture(128, 126, 0), 32);
    sound.resize(65536);
    bitmap.resize(65536);
    const std::string texts = folder.Write("texts", MakeWorstPe(6, 1025, Bytes(65536))),
                      sounds = folder.Write("sounds", MakeWorstPe(10, 1025, sound)),
                      bitmaps = folder.Write("bitmaps", MakeWorstPe(2, 1025, bitmap));
    const std::pair<Lines, std::string> cases[] = {
        {{"save", "--all", "-o", folder.Path("out"), texts}, "not saved: 1."},
        {{"strings", texts}, "is not read: with those before it"},
        {{"page", "-o", folder.Path("page"), texts}, "is not read: with those before it"},
        {{"page", "-o", folder.Path("all"), sounds}, "The page has the 67108864 bytes"},
        {{"page", "-o", folder.Path("drawn"), bitmaps}, "than a file may have: 1."},
    };
    for (const auto &[command, text] : cases) {
        const ToolRun run = RunTool(folder, command);
        EXPECT_EQ(run.status, ExitFailed);
        EXPECT_NE(run.err.find(text), std::string::npos) << run.err;
    }
    const Bytes drawn = ReadFile(folder.path / "drawn");
    const std::string_view tree((const char *)drawn.data(), drawn.size());
    EXPECT_NE(tree.find("href=\"#f1r1023\""), tree.npos);
    EXPECT_EQ(tree.find("href=\"#f1r1024\""), tree.npos);
    EXPECT_EQ(folder.Files().size(), 6 + 1024u);
    EXPECT_LT(ReadFile(folder.path / "all").size(), 67108864 + 65536 * 4u);
}

TEST(FileNames, AreTakenByBothSystemsAndToldApart)
{
    for (const auto &[name, encoded] : {std::pair("a<b>:\"|?*", "a%3Cb%3E%3A%22%7C%3F%2A"),
                                        {"tab\there", "tab%09here"},
                                        {"COM10", "COM10"},
                                        {"lpt\xC2\xB9", "%6Cpt\xC2\xB9"},
                                        {"COM\xC2\xB2", "%43OM\xC2\xB2"},
                                        {"COM\xC2\xB3.x", "%43OM\xC2\xB3.x"},
                                        {"100% a", "100% a"}})
        EXPECT_EQ(EncodeFileName(name), encoded);

    std::string longName = std::string(249, 'n');
    for (int i = 0; i < 10; i++)
        longName += "\xC3\xA9";
    // At most 255 bytes, with no half of a character or of an escape.
    NamesInFolder folder;
    for (const auto &[name, extension, next] :
         {std::tuple("A"s, ".BMP", "A.BMP"s),
          {"a (2)", ".BMP", "a (2).BMP"},
          {"a", ".BMP", "a (3).BMP"},
          {"\xC3\x89", ".BMP", "\xC3\x89.BMP"},
          {"\xC3\xA9", ".BMP", "\xC3\xA9 (2).BMP"},
          {longName, ".ICO", std::string(249, 'n') + "\xC3\xA9.ICO"},
          {longName, ".ICO", std::string(247, 'n') + " (2).ICO"},
          {std::string(250, 'x') + "%2F", ".ICO", std::string(250, 'x') + ".ICO"},
          {std::string(249, 'x') + "%2F", ".ICO", std::string(249, 'x') + ".ICO"},
          {std::string(248, 'x') + "%2Fx", ".ICO", std::string(248, 'x') + "%2F.ICO"},
          {std::string(300, '\x80'), ".ICO", ".ICO"},
          {std::string(253, 'y') + ". y", "", std::string(253, 'y')}})
        EXPECT_EQ(NextFileName(&folder, name, extension), next);
}
