#include "cli/save.h"

#include "cli/numbers.h"
#include "cli/progress.h"
#include "cli/reading.h"
#include "cli/save_all.h"
#include "cli/save_folder.h"
#include "cli/save_text.h"
#include "exe/catalog.h"
#include "exe/survey.h"
#include "export/formats.h"
#include "platform/console.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <new>

// One run of the command.
struct SaveRun {
    const SaveOptions *options;
    FILE *out;
    FILE *err;
    std::vector<bool> nameMatched; // of options->names
    NamesInFolder folderNames;     // of the files' folders
    Progress progress;
    bool anyRead; // whether a file was
    ExitStatus status;
    bool isStopped;      // no further file is read
    StringFormat format; // of the texts of the file that is read
};

// The texts of a file's string tables, in the code page.
struct TextLosses {
    std::string losing; // numbers of the blocks that lose characters
    std::string empty;  // of those that come out empty
};

// What is wrong with options that are given together, empty for nothing.
static std::string CheckTogether(const SaveOptions &options)
{
    if (options.codePage != 0 && !options.all && !options.utf8)
        return "--code-page is of --utf8 and --all; what is saved otherwise stays as it is.";
    return options.all && !options.categories.empty()
               ? "--all saves every kind; --category chooses among those that are saved without it."
               : "";
}

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
    save->add_flag("--all", options->all,
                   "Save every resource: any kind, any language, whole icons, 64-bit too");
    save->add_option("-o,--output", options->output,
                     "Folder to save to (default: the file's name and .resources, here); of "
                     "several files, the folder that theirs are made in")
        ->type_name("DIR");
    save->add_option("--category", options->categories, "Save only this kind; may be repeated")
        ->type_name(choice)
        ->allow_extra_args(false)
        ->transform(CLI::Validator(CategoryNumber, "", ""));
    save->add_option("--name", options->names, "Save only what has this name; may be repeated")
        ->type_name("NAME")
        ->allow_extra_args(false);
    save->add_flag("-f,--force", options->force, "Replace files that are there already");
    save->add_flag("--salvage", options->salvage, "Keep what could be read of a damaged file");
    save->add_flag("--utf8", options->utf8,
                   "String tables as UTF-8, with each string's identifier");
    AddCodePageOption(save, "Code page of names and texts in 16-bit files, for --utf8 and --all",
                      &options->codePage);
    save->add_option("FILE", options->files, "Executables or libraries")->required();
    save->final_callback([options] {
        const std::string wrong = CheckTogether(*options);
        if (!wrong.empty())
            throw CLI::ParseError(wrong, ExitUsage);
    });
    return save;
}

// Whether a resource of this name, as UTF-8, is asked for.
static bool IsNameWanted(SaveRun *run, const std::string &name)
{
    if (run->options->names.empty())
        return true;
    bool wanted = false;
    const std::string folded = FoldName(name);
    for (size_t i = 0; i < run->options->names.size(); i++) {
        if (FoldName(run->options->names[i]) == folded)
            wanted = run->nameMatched[i] = true;
    }
    return wanted;
}

// An entry's name as UTF-8. A PE file's is in the ANSI page.
static std::string NameOf(const SaveRun *run, const ResourceEntry &entry)
{
    return TextToUtf8(entry.name, run->format.isNe ? run->format.codePage : 0);
}

static bool IsWanted(SaveRun *run, const ResourceEntry &entry)
{
    const std::vector<DWORD> &kinds = run->options->categories;
    if (!kinds.empty() && std::find(kinds.begin(), kinds.end(), entry.category) == kinds.end())
        return false;
    return IsNameWanted(run, NameOf(run, entry));
}

static void NoteLosses(const ResourceEntry &entry, const BYTE *data, TextLosses *losses)
{
    std::string *noted = nullptr;
    if (LosesCharacters(data, entry.size))
        noted = &losses->losing;
    else if (ComesOutEmpty(data, entry.size))
        noted = &losses->empty;
    if (noted != nullptr)
        *noted += (noted->empty() ? "" : ", ") + TextToUtf8(entry.name);
}

static void TellLosses(const SaveRun *run, const SaveFolder *folder, const TextLosses &losses)
{
    if (!losses.losing.empty())
        PrintFault(run->err, folder->source,
                   "Characters that the code page lacks are ? in the string tables " +
                       losses.losing + "; --utf8 keeps them.");
    if (!losses.empty.empty())
        PrintFault(run->err, folder->source,
                   "There is no text in the string tables " + losses.empty + ".");
}

// Text that begins with no number is block 1, whose strings count from 0.
static DWORD BlockNumber(const ResourceEntry &entry)
{
    char *end;
    const unsigned long number = strtoul(entry.name, &end, 10);
    return *end == 0 && number <= 0xFFFF ? (DWORD)number : 1;
}

static WriteOutcome WriteText(FILE *stream, const ResourceEntry &entry, const SaveRun *run,
                              TextLosses *losses)
{
    const BYTE *data = (const BYTE *)GlobalLock(entry.data);
    if (data == nullptr)
        return WriteDataUnavailable;
    WriteOutcome outcome = WriteDone;
    if (run->options->utf8)
        outcome = WriteUtf8Texts(stream, data, entry.size, &run->format,
                                 FirstStringId(BlockNumber(entry)));
    else
        NoteLosses(entry, data, losses);
    GlobalUnlock(entry.data);
    return run->options->utf8 ? outcome : FindExportFormat(&entry)->writeStream(stream, &entry);
}

static void SaveEntry(const SaveRun *run, SaveFolder *folder, const ResourceEntry &entry,
                      TextLosses *losses)
{
    const ExportFormat *written = FindExportFormat(&entry);
    SaveFile(folder, CategoryLabel(entry.category), NameOf(run, entry),
             PathExtension(written->defaultName), [&](FILE *stream) {
                 return entry.category == CategoryString ? WriteText(stream, entry, run, losses)
                                                         : written->writeStream(stream, &entry);
             });
}

// Whether the run goes on; done and count are resources of the file.
static bool GoOn(SaveRun *run, SaveFolder *folder, size_t done, size_t count)
{
    if (StopRequested()) {
        ClearProgress(&run->progress);
        FaultOf(folder, folder->source, "Stopped before everything was saved.");
        run->isStopped = true;
        return false;
    }
    if (done > 0)
        ShowProgress(&run->progress, done, count, "resources");
    return true;
}

static void SaveEntries(SaveRun *run, SaveFolder *folder, TextLosses *losses)
{
    ResourceEntry entry;
    for (LONG index = 0; index < openCatalog.count; index++) {
        if (!GoOn(run, folder, (size_t)index, (size_t)openCatalog.count))
            return;
        if (GetEntry(openCatalog.entries, &entry, index) && IsWanted(run, entry))
            SaveEntry(run, folder, entry, losses);
        if (folder->isDiskFull || folder->isUnusable)
            break;
    }
    ClearProgress(&run->progress);
}

static std::string BaseName(const std::string &file)
{
    const std::u8string utf8(file.begin(), file.end());
    const std::u8string name = std::filesystem::path(utf8).filename().u8string();
    return std::string(name.begin(), name.end());
}

static void PlaceFolder(SaveRun *run, const std::string &path, SaveFolder *folder)
{
    const SaveOptions &options = *run->options;
    folder->err = run->err;
    folder->source = path;
    folder->isGiven = !options.output.empty() && options.files.size() == 1;
    folder->parent = folder->isGiven ? "" : options.output;
    folder->name = folder->isGiven ? options.output
                                   : NextFileName(&run->folderNames, BaseName(path), ".resources");
    folder->replaces = options.force;
    folder->buffer.resize(1 << 16);
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

static void TellCount(SaveRun *run, const SaveFolder *folder)
{
    std::string text = FolderPath(folder);
    if (folder->count > 0)
        text = std::to_string(folder->count) + (folder->count == 1 ? " file in " : " files in ") +
               text;
    else
        text = "No files in " + text;
    if (PrintText(run->out, SafeText(text) + "\n"))
        return;
    run->status = ExitFailed;
    if (!OutputIsClosed())
        PrintText(run->err, "quillmoor-cli: How many files went where cannot be written.\n");
}

// Takes the outcome of a file's reading, and tells its reason. Returns whether there is something
// to save.
static bool TakeReading(SaveRun *run, const std::string &path, ReadingResult result,
                        const std::string &reason)
{
    if (!reason.empty())
        PrintFault(run->err, path, reason);
    if (result == ReadingRefused)
        run->status = ExitFailed;
    else
        run->anyRead = true;
    return result == ReadingDone;
}

// Save what the file holds. Return false, with the reason told, when that is nothing.

static bool SaveKept(SaveRun *run, FILE *file, SaveFolder *folder, TextLosses *losses)
{
    std::string reason;
    ReadingOptions reading;
    reading.salvage = run->options->salvage;
    reading.allDoes = "saves";
    if (run->options->utf8)
        run->format = {IsNeFile(file), run->options->codePage};
    const ReadingResult result = ReadExecutable(file, nullptr, reading, &reason);
    if (!TakeReading(run, folder->source, result, reason))
        return false;
    Guard(run, [&] { SaveEntries(run, folder, losses); });
    return true;
}

static bool SaveSurveyed(SaveRun *run, FILE *file, SaveFolder *folder)
{
    std::string reason;
    FilePages pages;
    Survey survey;
    OpenPages(&pages, file);
    const ReadingResult result =
        SurveyExecutable(&pages, run->options->codePage, run->options->salvage, &survey, &reason);
    if (!TakeReading(run, folder->source, result, reason))
        return false;
    AllSaving saving = {&pages, &survey, folder, run->options->codePage, nullptr, nullptr};
    Guard(run, [&] {
        saving.isWanted = [run](const std::string &name) { return IsNameWanted(run, name); };
        saving.goOn = [&](size_t done) { return GoOn(run, folder, done, survey.resources.size()); };
        SaveEverything(&saving);
    });
    ClearProgress(&run->progress);
    return true;
}

// Finishes what was saved of a file.
static void FinishFile(SaveRun *run, SaveFolder *folder, const TextLosses &losses)
{
    Guard(run, [&] {
        if (FinishSaveFolder(folder) != ExitDone)
            run->status = ExitFailed;
    });
    run->isStopped = run->isStopped || folder->isDiskFull;
    Guard(run, [&] { TellLosses(run, folder, losses); });
    Guard(run, [&] { TellCount(run, folder); });
}

static void SaveOne(SaveRun *run, const std::string &path)
{
    SaveFolder folder = {};
    TextLosses losses;
    std::string reason;
    PlaceFolder(run, path, &folder);
    FILE *file = OpenExecutable(path, &reason);
    if (file == nullptr) {
        TakeReading(run, path, ReadingRefused, reason);
        return;
    }
    Guard(run, [&] {
        if (run->options->all ? SaveSurveyed(run, file, &folder)
                              : SaveKept(run, file, &folder, &losses))
            FinishFile(run, &folder, losses);
    });
    fclose(file);
    ReleaseCatalog(&openCatalog);
}

static void TellUnmatched(SaveRun *run)
{
    const std::vector<std::string> &files = run->options->files;
    if (!run->anyRead || run->isStopped)
        return;
    for (size_t i = 0; i < run->nameMatched.size(); i++) {
        if (run->nameMatched[i])
            continue;
        PrintFault(run->err, files.size() == 1 ? files[0] : std::to_string(files.size()) + " files",
                   "No resource asked for is named " + run->options->names[i] + ".");
        run->status = ExitFailed;
    }
}

ExitStatus RunSave(const SaveOptions &options, FILE *out, FILE *err)
{
    SaveRun run = {};
    run.options = &options;
    run.out = out;
    run.err = err;
    run.nameMatched.resize(options.names.size());
    run.progress = StartProgress(err);
    CatchStopRequests();
    for (const std::string &path : options.files)
        if (!run.isStopped)
            SaveOne(&run, path);
    TellUnmatched(&run);
    return run.status;
}
