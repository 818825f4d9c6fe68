#include "cli/page.h"

#include "cli/finished_file.h"
#include "cli/folder_files.h"
#include "cli/page_file.h"
#include "cli/path_text.h"
#include "cli/reading.h"
#include "exe/catalog.h"
#include "exe/refusal.h"
#include "platform/console.h"
#include "platform/files.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <new>

static const char stoppedText[] = "Stopped before the page was whole.";

// A file that is refused.
struct Refusal {
    std::string path;
    std::string reason;
};

// One run of the command.
struct PageRun {
    const PageOptions *options;
    FILE *out;
    FILE *err;
    HtmlPage page;
    std::vector<std::string> files; // that the page tells of
    std::vector<Refusal> refusals;
    uint64_t fileBytes; // of all of them together
    size_t others;      // files in folders that are no executables
    size_t told;        // files that the page tells of, read to their end
    Progress progress;
    ExitStatus status;
};

CLI::App *AddPageCommand(CLI::App &app, PageOptions *options)
{
    CLI::App *page = app.add_subcommand("page", "Write one HTML page of everything, to read");
    page->add_option("-o,--output", options->output, "File to write to, - for standard output")
        ->type_name("OUT")
        ->required();
    page->add_flag("-f,--force", options->force, "Replace a file that is there already");
    page->add_option("FILE", options->files, "Executables or libraries, or folders of them")
        ->required();
    return page;
}

static void Fail(PageRun *run, const std::string &path, const std::string &text)
{
    PrintFault(run->err, path, text);
    run->status = ExitFailed;
}

// Calls `read` with the open file. Returns false, with the reason, when it cannot be opened.
template <typename Read>
static bool WithFile(const std::string &path, std::string *reason, Read read)
{
    FILE *stream = OpenExecutable(path, reason);
    if (stream == nullptr)
        return false;
    try {
        read(stream);
    } catch (...) {
        fclose(stream);
        throw;
    }
    fclose(stream);
    return true;
}

static void Refuse(PageRun *run, const std::string &path, const std::string &reason)
{
    ClearProgress(&run->progress);
    run->refusals.push_back({path, reason});
    Fail(run, path, reason);
}

// Takes a file that the page is to tell of. Of a folder, not all are executables.
static void TakeFile(PageRun *run, const std::string &path, bool isOfFolder)
{
    std::string reason;
    ProbeOutcome outcome = ProbeRead;
    WithFile(path, &reason, [&](FILE *stream) {
        const auto pages = std::make_unique<FilePages>();
        ExecutableKind kind;
        OpenPages(pages.get(), stream);
        outcome = IdentifyFile(pages.get(), &kind);
        if (outcome == ProbeRead)
            run->fileBytes += pages->length;
        else
            reason = FailureText();
    });
    if (reason.empty())
        run->files.push_back(path);
    else if (isOfFolder && outcome == ProbeNotExecutable && NotedFailure() == FailureNotExecutable)
        run->others++;
    else
        Refuse(run, path, reason);
}

static void TakePath(PageRun *run, const std::string &path)
{
    if (!IsFolder(path.c_str())) {
        TakeFile(run, path, false);
        return;
    }
    const size_t before = run->files.size() + run->refusals.size();
    FolderVisitor visitor;
    visitor.takeFile = [run](const std::string &inner) { TakeFile(run, inner, true); };
    visitor.failFolder = [run](const std::string &inner) {
        Refuse(run, inner, std::string("The folder cannot be read: ") + FileErrorText() + ".");
    };
    VisitFiles(path, visitor);
    if (before == run->files.size() + run->refusals.size() && !StopRequested())
        Refuse(run, path, "There is no executable in the folder.");
}

static std::string TitleOf(const PageRun *run)
{
    if (run->options->files.size() > 1 && run->files.size() > 1)
        return std::to_string(run->files.size()) + " executables";
    const std::string &named =
        run->options->files.size() > 1 ? run->files[0] : run->options->files[0];
    std::error_code unknown;
    const std::filesystem::path whole =
        std::filesystem::absolute(PathOf(named), unknown).lexically_normal();
    // One that ends with a separator has no name behind it.
    const std::filesystem::path path = whole.has_filename() ? whole : whole.parent_path();
    return path.has_filename() ? Utf8Of(path.filename()) : named;
}

static void AppendContents(PageRun *run)
{
    if (run->files.size() < 2)
        return;
    AppendHtml(&run->page, "<nav aria-label=\"Files\">\n<ul>\n");
    for (size_t i = 0; i < run->files.size(); i++)
        AppendHtml(&run->page, "<li><a href=\"#f" + std::to_string(i + 1) + "\">" +
                                   HtmlName(run->files[i]) + "</a></li>\n");
    AppendHtml(&run->page, "</ul>\n</nav>\n");
}

// Adds what there is to tell of the file of a number.
static void AppendOne(PageRun *run, size_t number)
{
    std::string reason;
    const bool isAlone = run->files.size() == 1;
    const std::string &path = run->files[number - 1];
    const auto file = std::make_unique<PageFile>();
    file->page = &run->page;
    file->path = path;
    file->number = number;
    file->level = isAlone ? 2 : 3;
    file->progress = &run->progress;
    file->err = run->err;
    if (WithFile(path, &reason, [&](FILE *stream) { AppendFile(file.get(), stream); }))
        run->told += !file->isUnreadable;
    else
        Refuse(run, path, reason);
    if (file->hasFaults)
        run->status = ExitFailed;
}

static void AppendFiles(PageRun *run)
{
    for (size_t i = 0; i < run->files.size(); i++) {
        if (!HasRoom(&run->page, 0) || StopRequested() || run->page.failed)
            break;
        AppendOne(run, i + 1);
        if (run->files.size() > 1)
            ShowProgress(&run->progress, i + 1, run->files.size(), "files");
    }
    ClearProgress(&run->progress);
}

static void AppendRefusals(PageRun *run)
{
    if (run->refusals.empty())
        return;
    AppendHtml(&run->page, "<section>\n<h2>Files that are not read</h2>\n<table>\n<thead><tr>"
                           "<th scope=\"col\">File</th><th scope=\"col\">Reason</th></tr></thead>\n"
                           "<tbody>\n");
    for (const Refusal &refusal : run->refusals)
        AppendHtml(&run->page, "<tr><td>" + HtmlName(refusal.path) + "</td><td>" +
                                   HtmlText(refusal.reason) + "</td></tr>\n");
    AppendHtml(&run->page, "</tbody>\n</table>\n</section>\n");
}

static void AppendOthers(PageRun *run)
{
    if (run->others > 0)
        AppendHtml(&run->page, "<p class=\"faint\">Other files in the folders, which are no "
                               "executables: " +
                                   std::to_string(run->others) + "</p>\n");
}

static void AppendEnd(PageRun *run, const std::string &shown)
{
    if (run->page.isFull) {
        const std::string text = "The page has the " + std::to_string(run->page.limit) +
                                 " bytes that it may have of files of this size; what follows is "
                                 "left out.";
        AppendHtml(&run->page, "<p class=\"fault\">" + HtmlText(text) + "</p>\n");
        Fail(run, shown, text);
    }
    AppendRefusals(run);
    AppendOthers(run);
}

// Writes the page. Returns WriteDone, WriteShort, or WriteDataUnavailable, with the reason told,
// when there is none to keep.
static WriteOutcome WritePage(PageRun *run, FILE *stream, const std::string &shown)
{
    run->page = {stream, KeptBytesLimit(run->fileBytes), 0, "", false, false};
    BeginPage(&run->page, TitleOf(run));
    AppendContents(run);
    AppendFiles(run);
    AppendEnd(run, shown);
    if (!EndPage(&run->page))
        return WriteShort;
    if (StopRequested())
        Fail(run, shown, stoppedText);
    return run->told > 0 && !StopRequested() ? WriteDone : WriteDataUnavailable;
}

static void WriteToStream(PageRun *run)
{
    const std::string shown = "standard output";
    if (WritePage(run, run->out, shown) == WriteShort)
        Fail(run, shown, std::string("The page cannot be written: ") + FileErrorText() + ".");
}

static void WriteInFolder(PageRun *run, const OutputFolder *folder, const std::string &name)
{
    const std::string &shown = run->options->output;
    WriteOutcome written = WriteShort;
    if (!run->options->force && ExistsInFolder(folder, name.c_str())) {
        Fail(run, shown, inTheWayText);
        return;
    }
    const FileResult result = MakeFile(
        folder, name,
        [&](FILE *stream) {
            written = WritePage(run, stream, shown);
            return written;
        },
        nullptr, run->options->force);
    if (result.outcome == FileNoMemory)
        throw std::bad_alloc();
    if (result.outcome == FileInTheWay)
        Fail(run, shown, inTheWayText);
    else if (result.outcome == FileFailed && written != WriteDataUnavailable)
        Fail(run, shown, result.reason);
}

static void WriteOutput(PageRun *run)
{
    const std::string &output = run->options->output;
    if (output == "-") {
        WriteToStream(run);
        return;
    }
    const std::string reason =
        UseFolderOf(output, [run](const OutputFolder *folder, const std::string &name) {
            WriteInFolder(run, folder, name);
        });
    if (!reason.empty())
        Fail(run, output, reason);
}

ExitStatus RunPage(const PageOptions &options, FILE *out, FILE *err)
{
    PageRun run = {};
    run.options = &options;
    run.out = out;
    run.err = err;
    CatchStopRequests();
    run.progress = StartProgress(err);
    for (const std::string &path : options.files)
        if (!StopRequested())
            TakePath(&run, path);
    if (StopRequested())
        Fail(&run, options.output, stoppedText);
    else if (!run.files.empty())
        WriteOutput(&run);
    return run.status;
}
