#include "cli/list.h"

#include "cli/list_catalog.h"
#include "cli/list_survey.h"
#include "cli/numbers.h"
#include "cli/reading.h"
#include "exe/catalog.h"
#include "exe/refusal.h"
#include "platform/console.h"

#include <CLI/CLI.hpp>
#include <new>

CLI::App *AddListCommand(CLI::App &app, ListOptions *options)
{
    CLI::App *list =
        app.add_subcommand("list", "Print the tree of resources, as the window shows it");
    list->add_flag("--all", options->all,
                   "Print every resource: any kind, any language, 64-bit too");
    list->add_flag("--json", options->json, "Print one JSON object a line, in the file's order");
    list->add_flag("--salvage", options->salvage, "Keep what could be read of a damaged file");
    AddCodePageOption(list, "Code page of names in 16-bit files", &options->codePage);
    list->add_option("FILE", options->files, "Executables or libraries")->required();
    return list;
}

// One run of the command.
struct ListRun {
    const ListOptions *options;
    FILE *err;
    HWND tree;  // NULL when no tree is printed
    FILE *file; // that is read; NULL between two
    Listing listing;
};

static void AppendHeading(ListRun *run, const std::string &path)
{
    if (run->options->files.size() > 1 && !run->options->json)
        AppendText(&run->listing, SafeText(path) + "\n");
}

static ReadingResult ListCatalog(ListRun *run, const std::string &path, FILE *file,
                                 std::string *reason)
{
    ReadingOptions options;
    options.salvage = run->options->salvage;
    options.allDoes = "lists";
    const ReadingResult result = ReadExecutable(file, run->tree, options, reason);
    if (result != ReadingDone)
        return result;
    AppendHeading(run, path);
    // A PE file's names are in the ANSI page.
    const UINT codePage = IsNeFile(file) ? run->options->codePage : 0;
    if (run->options->json)
        AppendCatalog(&run->listing, path, file, codePage);
    else
        AppendTree(&run->listing, run->tree, codePage);
    ReleaseCatalog(&openCatalog);
    return result;
}

static ReadingResult ListSurvey(ListRun *run, const std::string &path, FILE *file,
                                std::string *reason)
{
    FilePages pages;
    Survey survey;
    OpenPages(&pages, file);
    const ReadingResult result =
        SurveyExecutable(&pages, run->options->codePage, run->options->salvage, &survey, reason);
    if (result != ReadingDone)
        return result;
    AppendHeading(run, path);
    if (run->options->json)
        AppendSurveyObjects(&run->listing, &pages, survey, path);
    else
        AppendSurveyLines(&run->listing, &pages, survey);
    return result;
}

// Lists one file. Returns false when it was refused.
static bool ListFile(ListRun *run, const std::string &path)
{
    std::string reason;
    ReadingResult result = ReadingRefused;
    run->file = OpenExecutable(path, &reason);
    if (run->file != nullptr) {
        result = run->options->all ? ListSurvey(run, path, run->file, &reason)
                                   : ListCatalog(run, path, run->file, &reason);
        fclose(run->file);
        run->file = nullptr;
    }
    // The kind of the file, its pictures and their groups are read for the list alone.
    if (result == ReadingDone && reason.empty() && NotedFailure() == FailureUnreadable) {
        reason = FailureText();
        result = ReadingRefused;
    }
    if (result == ReadingRefused && run->options->json) {
        JsonObject object;
        AddTextField(&object, "file", path);
        AddTextField(&object, "reason", reason);
        AppendObject(&run->listing, object);
    }
    if (!reason.empty())
        PrintFault(run->err, path, reason);
    return result != ReadingRefused;
}

// The window class of trees is met by its name alone: the list needs items, not a picture of them.
static HWND CreateHiddenTree()
{
    return CreateWindowExA(0, WC_TREEVIEWA, "", WS_CHILD, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                           nullptr, nullptr);
}

// Destroys the tree with its pictures, which are not its own.
static void DestroyHiddenTree(HWND tree)
{
    ImageList_Destroy((HIMAGELIST)SendMessageA(tree, TVM_SETIMAGELIST, TVSIL_NORMAL, 0));
    DestroyWindow(tree);
}

static ExitStatus ListFiles(ListRun *run)
{
    ExitStatus status = ExitDone;
    for (const std::string &path : run->options->files) {
        if (!ListFile(run, path))
            status = ExitFailed;
        if (!FinishListing(&run->listing, run->err))
            return ExitFailed;
    }
    return status;
}

ExitStatus RunList(const ListOptions &options, FILE *out, FILE *err)
{
    ExitStatus status = ExitFailed;
    ListRun run = {&options, err, nullptr, nullptr, {out, "", false}};
    const bool hasTree = !options.json && !options.all;
    if (hasTree)
        run.tree = CreateHiddenTree();
    if (hasTree && run.tree == nullptr) {
        PrintNoMemory(err);
        return status;
    }
    try {
        status = ListFiles(&run);
    } catch (const std::bad_alloc &) {
        PrintNoMemory(err);
    }
    if (run.file != nullptr)
        fclose(run.file);
    ReleaseCatalog(&openCatalog);
    if (run.tree != nullptr)
        DestroyHiddenTree(run.tree);
    return status;
}
