#include "cli/save.h"

#include "cli/file_names.h"
#include "cli/reading.h"
#include "exe/catalog.h"
#include "exe/categories.h"
#include "export/formats.h"
#include "platform/console.h"
#include "platform/files.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>

typedef std::chrono::steady_clock Clock;

// Where the entries of one category go.
struct CategoryFolder {
    OutputFolder *folder;          // NULL when it cannot be used
    std::string unfinished;        // the name that a folder made by this run has until it is whole
    std::vector<std::string> made; // its files, while it has that name
    NamesInFolder names;
};

// One run of the command.
struct SaveRun {
    const SaveOptions *options;
    FILE *err;
    OutputFolder *output;
    std::map<DWORD, CategoryFolder> folders;
    std::vector<int> nameMatched; // of options->names
    std::vector<char> buffer;     // of the one file that is written; most fit whole
    Clock::time_point start;
    Clock::time_point lastProgress;
    ExitStatus status;
    int isDiskFull; // nothing more is written
};

// Makes the number of a category of its word, for the parser. Returns what is wrong with the word,
// empty for nothing.
static std::string CategoryNumber(std::string &word)
{
    std::string choice;
    for (const Category &row : categories) {
        if (FoldName(word) == row.word) {
            word = std::to_string(row.category);
            return "";
        }
        choice += (choice.empty() ? "" : ", ") + std::string(row.word);
    }
    return SafeText(word) + " is no category; there are " + choice + ".";
}

CLI::App *AddSaveCommand(CLI::App &app, SaveOptions *options)
{
    std::string choice;
    for (const Category &row : categories)
        choice += (choice.empty() ? "" : "|") + std::string(row.word);
    CLI::App *save = app.add_subcommand("save", "Save resources as BMP, ICO, TXT, WAV and BIN");
    save->add_option("--output", options->output,
                     "Folder to save to (default: the file's name and .resources, here)")
        ->type_name("DIR");
    save->add_option("--category", options->categories, "Save only this kind; may be repeated")
        ->type_name(choice)
        ->allow_extra_args(false)
        ->transform(CLI::Validator(CategoryNumber, "", ""));
    save->add_flag("--force", options->force, "Replace files that are there already");
    save->add_flag("--salvage", options->salvage, "Keep what could be read of a damaged file");
    save->add_option("FILE", options->file, "Executable or library")->required();
    save->add_option("NAME", options->names, "Names of the resources to save (default: all)");
    return save;
}

static void Fault(SaveRun *run, const std::string &path, const std::string &text)
{
    PrintFault(run->err, path, text);
    run->status = ExitFailed;
}

static int IsWanted(SaveRun *run, const ResourceEntry &entry)
{
    const std::vector<DWORD> &kinds = run->options->categories;
    if (!kinds.empty() && std::find(kinds.begin(), kinds.end(), entry.category) == kinds.end())
        return 0;
    if (run->options->names.empty())
        return 1;
    int wanted = 0;
    const std::string name = FoldName(TextToUtf8(entry.name));
    for (size_t i = 0; i < run->options->names.size(); i++) {
        if (FoldName(run->options->names[i]) == name)
            wanted = run->nameMatched[i] = 1;
    }
    return wanted;
}

// The first unfinished folder of a run has the first name, unless another run's has it.
static void TellLeftOver(const SaveRun *run, const std::string &first)
{
    if (!first.empty() && !first.ends_with("-1"))
        PrintFault(run->err, run->options->file,
                   "In the folder there is .unfinished-1 of another run; if that has ended, it can "
                   "be deleted.");
}

// A folder that is there already is filled file by file. A new one is filled under another name,
// which it keeps until the run ends: so its files need not be moved one by one.
static CategoryFolder *FindFolder(SaveRun *run, DWORD category)
{
    const auto [place, isNew] = run->folders.try_emplace(category);
    CategoryFolder *found = &place->second;
    if (isNew) {
        if (ExistsInFolder(run->output, CategoryLabel(category)))
            found->folder = OpenSubfolder(run->output, CategoryLabel(category));
        else
            found->folder = MakeUnfinishedFolder(run->output, &found->unfinished);
        if (run->folders.size() == 1 && found->folder != nullptr)
            TellLeftOver(run, found->unfinished);
        if (found->folder == nullptr)
            Fault(run, CategoryLabel(category),
                  std::string("The folder cannot be used: ") + FileErrorText() + ".");
    }
    return found;
}

// Gives a file its name; one that cannot have it is deleted.
static void PutInPlace(SaveRun *run, const OutputFolder *from, const std::string &oldName,
                       const OutputFolder *to, const std::string &name, const std::string &shown)
{
    const MoveResult moved =
        MoveBetween(from, oldName.c_str(), to, name.c_str(), run->options->force);
    if (moved == MoveDone)
        return;
    DeleteInFolder(from, oldName.c_str());
    if (moved == MoveExists)
        Fault(run, shown, "The file is there already; --force replaces it.");
    else
        Fault(run, shown, std::string("The file cannot be put in place: ") + FileErrorText() + ".");
}

static std::string Shown(DWORD category, const std::string &name)
{
    return std::string(CategoryLabel(category)) + pathSeparator + name;
}

// Another run has put its folder in place meanwhile: this one's files go there one by one.
static int MergeFolder(SaveRun *run, DWORD category, const CategoryFolder &folder)
{
    OutputFolder *from = OpenSubfolder(run->output, folder.unfinished.c_str());
    OutputFolder *to = from ? OpenSubfolder(run->output, CategoryLabel(category)) : nullptr;
    if (to != nullptr)
        for (const std::string &name : folder.made)
            PutInPlace(run, from, name, to, name, Shown(category, name));
    CloseFolder(from);
    CloseFolder(to);
    if (to != nullptr)
        DeleteSubfolder(run->output, folder.unfinished.c_str());
    return to != nullptr;
}

static void DropFolder(const SaveRun *run, const CategoryFolder &folder)
{
    for (const std::string &name : folder.made)
        DeleteInFolder(folder.folder, name.c_str());
    CloseFolder(folder.folder);
    DeleteSubfolder(run->output, folder.unfinished.c_str());
}

static void FinishFolder(SaveRun *run, DWORD category, const CategoryFolder &folder)
{
    const int isUnfinished = folder.folder != nullptr && !folder.unfinished.empty();
    if (isUnfinished && run->isDiskFull) {
        DropFolder(run, folder);
        return;
    }
    CloseFolder(folder.folder);
    if (!isUnfinished)
        return;
    const char *label = CategoryLabel(category);
    const MoveResult moved =
        MoveBetween(run->output, folder.unfinished.c_str(), run->output, label, 0);
    if (moved != MoveDone && !(moved == MoveExists && MergeFolder(run, category, folder)))
        Fault(run, label,
              "The folder cannot be put in place and is left as " + folder.unfinished + ": " +
                  FileErrorText() + ".");
}

// Fills a file that was just created. Returns 0, with the file deleted, on failure.
static int FillFile(SaveRun *run, const OutputFolder *folder, FILE *stream, const std::string &name,
                    const std::string &shown, const ResourceEntry &entry)
{
    if (stream == nullptr) {
        Fault(run, shown, std::string("The file cannot be created: ") + FileErrorText() + ".");
        return 0;
    }
    setvbuf(stream, run->buffer.data(), _IOFBF, run->buffer.size());
    const WriteOutcome outcome = FindExportFormat(&entry)->writeStream(stream, &entry);
    const int closed = fclose(stream) == 0;
    if (outcome == WriteDone && closed)
        return 1;
    NoteStreamError();
    DeleteInFolder(folder, name.c_str());
    run->isDiskFull = outcome != WriteDataUnavailable && DiskWasFull();
    Fault(run, shown,
          outcome == WriteDataUnavailable
              ? "The resource's data are not available."
              : std::string("The file cannot be written: ") + FileErrorText() + ".");
    return 0;
}

// Fills a file beside the one that is wanted, then gives it its name.
static void SaveBeside(SaveRun *run, const OutputFolder *folder, const std::string &name,
                       const std::string &shown, const ResourceEntry &entry)
{
    std::string beside;
    FILE *stream = CreateUnfinishedFile(folder, &beside);
    if (!FillFile(run, folder, stream, beside, shown, entry))
        return;
    PutInPlace(run, folder, beside, folder, name, shown);
}

static void SaveEntry(SaveRun *run, const ResourceEntry &entry)
{
    CategoryFolder *place = FindFolder(run, entry.category);
    if (place->folder == nullptr)
        return;
    const std::string name = NextFileName(&place->names, EncodeFileName(TextToUtf8(entry.name)),
                                          PathExtension(FindExportFormat(&entry)->defaultName));
    const std::string shown = Shown(entry.category, name);
    if (place->unfinished.empty())
        SaveBeside(run, place->folder, name, shown, entry);
    else {
        place->made.push_back(name);
        if (!FillFile(run, place->folder, CreateNewFile(place->folder, name.c_str()), name, shown,
                      entry))
            place->made.pop_back();
    }
}

static void ShowProgress(SaveRun *run, LONG done)
{
    const Clock::time_point now = Clock::now();
    if (now - run->start < std::chrono::seconds(1) ||
        now - run->lastProgress < std::chrono::milliseconds(100) || !IsTerminal(run->err))
        return;
    run->lastProgress = now;
    fprintf(run->err, "\r%ld of %ld resources", (long)done, (long)openCatalog.count);
    fflush(run->err);
}

static void ClearProgress(SaveRun *run)
{
    if (run->lastProgress != Clock::time_point())
        fprintf(run->err, "\r%40s\r", "");
}

static void SaveEntries(SaveRun *run)
{
    ResourceEntry entry;
    for (LONG index = 0; index < openCatalog.count; index++) {
        if (StopRequested()) {
            ClearProgress(run);
            Fault(run, run->options->file, "Stopped before everything was saved.");
            return;
        }
        if (GetEntry(openCatalog.entries, &entry, index) && IsWanted(run, entry))
            SaveEntry(run, entry);
        if (run->isDiskFull) {
            ClearProgress(run);
            return;
        }
        ShowProgress(run, index + 1);
    }
    ClearProgress(run);
    for (size_t i = 0; i < run->nameMatched.size(); i++)
        if (!run->nameMatched[i])
            Fault(run, run->options->file,
                  "No resource asked for is named " + run->options->names[i] + ".");
}

static std::string DefaultOutput(const std::string &file)
{
    const std::u8string utf8(file.begin(), file.end());
    const std::u8string name = std::filesystem::path(utf8).filename().u8string();
    return std::string(name.begin(), name.end()) + ".resources";
}

// Does a step of the run. One that runs out of memory is told, and does not stop the next one.
template <typename Step> static void Guard(SaveRun *run, Step step)
{
    try {
        step();
    } catch (const std::bad_alloc &) {
        PrintNoMemory(run->err);
        run->status = ExitFailed;
    }
}

static void SaveInto(SaveRun *run)
{
    const SaveOptions &options = *run->options;
    const std::string output =
        options.output.empty() ? DefaultOutput(options.file) : options.output;
    // Nobody named the default one: a link that lies in its place leads elsewhere.
    run->output =
        options.output.empty() ? OpenFolderHere(output.c_str()) : OpenFolder(output.c_str());
    if (run->output == nullptr)
        Fault(run, output, std::string("The folder cannot be used: ") + FileErrorText() + ".");
    else
        SaveEntries(run);
}

// Reads the file into openCatalog. Returns 0, with the reason told, when there is nothing to save.
static int ReadForSaving(const SaveOptions &options, FILE *err)
{
    std::string reason;
    ReadingOptions reading;
    reading.salvage = options.salvage;
    FILE *file = OpenExecutable(options.file, &reason);
    ReadingResult result = ReadingRefused;
    if (file != nullptr) {
        result = ReadExecutable(file, nullptr, reading, &reason);
        fclose(file);
    }
    if (!reason.empty())
        PrintFault(err, options.file, reason);
    return result == ReadingDone;
}

ExitStatus RunSave(const SaveOptions &options, FILE *err)
{
    SaveRun run = {};
    run.options = &options;
    run.err = err;
    run.nameMatched.resize(options.names.size());
    run.buffer.resize(1 << 16);
    run.start = Clock::now();
    if (!ReadForSaving(options, err))
        return ExitFailed;
    CatchStopRequests();
    Guard(&run, [&run] { SaveInto(&run); });
    for (const auto &place : run.folders)
        Guard(&run, [&run, &place] { FinishFolder(&run, place.first, place.second); });
    CloseFolder(run.output);
    ReleaseCatalog(&openCatalog);
    return run.status;
}
