#include "cli/icon.h"

#include "cli/finished_file.h"
#include "cli/icon_picture.h"
#include "cli/path_text.h"
#include "cli/reading.h"
#include "exe/type_names.h"
#include "export/group_file.h"
#include "platform/console.h"
#include "platform/files.h"

#include <CLI/CLI.hpp>
#include <new>

// One run of the command.
struct IconRun {
    const IconOptions *options;
    FILE *out;
    FILE *err;
    FilePages *pages;
    PictureIndex pictures;
};

CLI::App *AddIconCommand(CLI::App &app, IconOptions *options)
{
    CLI::App *icon = app.add_subcommand("icon", "Save the program's icon as ICO, or one PNG");
    icon->add_option("--size", options->size,
                     "Save the best picture as PNG, at most this many pixels wide and high")
        ->type_name("PIXELS")
        ->check(CLI::Range(1, 65535).description(""));
    icon->add_flag("-f,--force", options->force, "Replace a file that is there already");
    icon->add_option("FILE", options->file, "Executable or library")->required();
    icon->add_option("OUT", options->output,
                     "File to save to, - for standard output (default: the file's name with .ico "
                     "or .png, here)");
    return icon;
}

static ExitStatus Fail(const IconRun *run, const std::string &path, const std::string &text)
{
    PrintFault(run->err, path, text);
    return ExitFailed;
}

// The group that desktops take a file's icon from; NULL when there is none.
static const SurveyedResource *FindFirstGroup(const Survey *survey)
{
    const SurveyedResource *first = nullptr;
    for (const SurveyedResource &resource : survey->resources) {
        if (!IsIconGroup(&resource))
            continue;
        if (resource.name.isText)
            return &resource;
        if (first == nullptr || resource.name.number < first->name.number)
            first = &resource;
    }
    return first;
}

static WriteOutcome WriteWhole(FILE *stream, const std::vector<BYTE> &bytes)
{
    const bool isWhole = fwrite(bytes.data(), 1, bytes.size(), stream) == bytes.size();
    return isWhole && fflush(stream) == 0 ? WriteDone : WriteShort;
}

static ExitStatus WriteToStream(const IconRun *run, const std::vector<BYTE> &bytes)
{
    if (WriteWhole(run->out, bytes) == WriteDone)
        return ExitDone;
    NoteStreamError();
    return Fail(run, "standard output",
                std::string("The icon cannot be written: ") + FileErrorText() + ".");
}

static ExitStatus WriteInFolder(const IconRun *run, const OutputFolder *folder,
                                const std::string &name, const std::string &shown,
                                const std::vector<BYTE> &bytes)
{
    const auto write = [&bytes](FILE *stream) { return WriteWhole(stream, bytes); };
    // A service that shows thumbnails makes an empty file and reads it by what it has open.
    FILE *empty = run->options->force ? OpenEmptyFile(folder, name.c_str()) : nullptr;
    const FileResult result = empty != nullptr
                                  ? FillFile(folder, empty, name, write, nullptr)
                                  : MakeFile(folder, name, write, nullptr, run->options->force);
    switch (result.outcome) {
    case FileDone: return ExitDone;
    case FileInTheWay: return Fail(run, shown, inTheWayText);
    case FileNoMemory: throw std::bad_alloc();
    default: return Fail(run, shown, result.reason);
    }
}

static ExitStatus WriteOutput(const IconRun *run, const std::vector<BYTE> &bytes)
{
    if (run->options->output == "-")
        return WriteToStream(run, bytes);
    const char *extension = run->options->size > 0 ? ".png" : ".ico";
    const std::string output = run->options->output.empty()
                                   ? Utf8Of(PathOf(run->options->file).stem()) + extension
                                   : run->options->output;
    CatchStopRequests();
    ExitStatus status = ExitFailed;
    const std::string reason =
        UseFolderOf(output, [&](const OutputFolder *folder, const std::string &name) {
            status = WriteInFolder(run, folder, name, output, bytes);
        });
    return reason.empty() ? status : Fail(run, output, reason);
}

static const char *GroupText(GroupOutcome outcome)
{
    switch (outcome) {
    case GroupEmpty: return "None of its icon's pictures is in the file.";
    case GroupTooLarge: return "Its icon's pictures together are longer than what is saved.";
    default: return "Its icon's directory cannot be read.";
    }
}

static ExitStatus SaveAll(IconRun *run, const SurveyedResource *group)
{
    GroupFile file;
    const GroupOutcome outcome = MakeGroupFile(run->pages, &run->pictures, group, &file);
    if (outcome != GroupDone)
        return Fail(run, run->options->file, GroupText(outcome));
    if (file.missing > 0)
        PrintFault(
            run->err, run->options->file,
            "Pictures of its icon that are not in the file: " + std::to_string(file.missing) + ".");
    return WriteOutput(run, file.bytes);
}

static ExitStatus SaveBest(IconRun *run, const SurveyedResource *group)
{
    std::vector<GroupMember> members;
    size_t missing;
    const GroupOutcome outcome = ReadGroup(run->pages, &run->pictures, group, &members, &missing);
    if (outcome != GroupDone)
        return Fail(run, run->options->file, GroupText(outcome));
    const std::vector<BYTE> png = MakeIconPng(run->pages, members, run->options->size);
    if (png.empty())
        return Fail(run, run->options->file,
                    run->pages->isUnreadable ? FailureText()
                                             : "None of its icon's pictures can be drawn.");
    return WriteOutput(run, png);
}

static ExitStatus SaveIcon(IconRun *run)
{
    const SurveyChoice allGroups = {TYPE_ICON_GROUP, {}};
    Survey groups, pictures;
    std::string reason, picturesReason;
    const ReadingResult result =
        SurveyExecutable(run->pages, 0, true, &groups, &reason, &allGroups);
    const SurveyedResource *group = FindFirstGroup(&groups);
    if (group == nullptr)
        return Fail(run, run->options->file,
                    result == ReadingEmpty || reason.empty() ? "It carries no icon." : reason);
    const SurveyChoice itsPictures = ChoosePictures(run->pages, group);
    if (SurveyExecutable(run->pages, 0, true, &pictures, &picturesReason, &itsPictures) ==
            ReadingDone &&
        reason.empty())
        reason = picturesReason;
    if (!reason.empty())
        PrintFault(run->err, run->options->file, reason);
    IndexPictures(&pictures, &run->pictures);
    return run->options->size > 0 ? SaveBest(run, group) : SaveAll(run, group);
}

ExitStatus RunIcon(const IconOptions &options, FILE *out, FILE *err)
{
    IconRun run = {};
    run.options = &options;
    run.out = out;
    run.err = err;
    FilePages pages;
    std::string reason;
    FILE *file = OpenExecutable(options.file, &reason);
    if (file == nullptr)
        return Fail(&run, options.file, reason);
    OpenPages(&pages, file);
    run.pages = &pages;
    ExitStatus status = ExitFailed;
    try {
        status = SaveIcon(&run);
    } catch (...) {
        fclose(file);
        throw;
    }
    fclose(file);
    return status;
}
