#include "cli/save_folder.h"

#include "cli/finished_file.h"
#include "cli/reading.h"

#include <new>

std::string FolderPath(const SaveFolder *folder)
{
    std::string path = folder->parent;
    if (!path.empty() && !IsSeparator(path.c_str(), path.size() - 1))
        path += pathSeparator;
    return path + folder->name;
}

static std::string Shown(const SaveFolder *folder, const std::string &label)
{
    std::string path = FolderPath(folder);
    if (!IsSeparator(path.c_str(), path.size() - 1))
        path += pathSeparator;
    return path + label;
}

static std::string Shown(const SaveFolder *folder, const std::string &label,
                         const std::string &name)
{
    return Shown(folder, label) + pathSeparator + name;
}

void FaultOf(SaveFolder *folder, const std::string &path, const std::string &text)
{
    PrintFault(folder->err, path, text);
    folder->status = ExitFailed;
}

static OutputFolder *OpenOutput(const SaveFolder *folder)
{
    if (folder->isGiven)
        return OpenFolder(folder->name.c_str());
    // Nobody named this one: a link that lies in its place leads elsewhere.
    if (folder->parent.empty())
        return OpenFolderHere(folder->name.c_str());
    OutputFolder *parent = OpenFolder(folder->parent.c_str());
    if (parent == nullptr)
        return nullptr;
    OutputFolder *output = MakeSubfolder(parent, folder->name.c_str());
    if (output == nullptr && NameWasTaken())
        output = OpenSubfolder(parent, folder->name.c_str());
    CloseFolder(parent);
    return output;
}

static bool OpenOnce(SaveFolder *folder)
{
    if (folder->output != nullptr || folder->isUnusable)
        return folder->output != nullptr;
    folder->output = OpenOutput(folder);
    folder->isUnusable = folder->output == nullptr;
    if (folder->isUnusable)
        FaultOf(folder, FolderPath(folder),
                std::string("The folder cannot be used: ") + FileErrorText() + ".");
    return !folder->isUnusable;
}

// The first unfinished folder of a run has the first name, unless another run's has it.
static void TellLeftOver(const SaveFolder *folder, const std::string &first)
{
    if (!first.empty() && !first.ends_with("-1"))
        PrintFault(folder->err, FolderPath(folder),
                   "In the folder there is .unfinished-1 of another run; if that has ended, it can "
                   "be deleted.");
}

// A folder that is there already is filled file by file. A new one is filled under another name,
// which it keeps until the run ends: so its files need not be moved one by one.
static LabelFolder *FindFolder(SaveFolder *folder, const std::string &label)
{
    const auto [place, isNew] = folder->labels.try_emplace(label);
    LabelFolder *found = &place->second;
    if (isNew) {
        if (ExistsInFolder(folder->output, label.c_str()))
            found->folder = OpenSubfolder(folder->output, label.c_str());
        else
            found->folder = MakeUnfinishedFolder(folder->output, &found->unfinished);
        if (!folder->isLookedAt && found->folder != nullptr)
            TellLeftOver(folder, found->unfinished);
        folder->isLookedAt = folder->isLookedAt || found->folder != nullptr;
        if (found->folder == nullptr)
            FaultOf(folder, Shown(folder, label),
                    std::string("The folder cannot be used: ") + FileErrorText() + ".");
    }
    return found;
}

// Takes the outcome of a step on a file, and tells a failure. Returns whether it was done.
static bool TakeResult(SaveFolder *folder, const std::string &shown, const FileResult &result)
{
    if (result.outcome == FileNoMemory) {
        PrintNoMemory(folder->err);
        folder->status = ExitFailed;
    } else if (result.outcome == FileFailed) {
        folder->isDiskFull = folder->isDiskFull || result.isDiskFull;
        FaultOf(folder, shown, result.reason);
    } else if (result.outcome == FileInTheWay && folder->inTheWay++ == 0) {
        folder->firstInTheWay = shown;
    }
    return result.outcome == FileDone;
}

// Another run has put its folder in place meanwhile: this one's files go there one by one.
static bool MergeFolder(SaveFolder *folder, const std::string &label, const LabelFolder &merged)
{
    OutputFolder *from = OpenSubfolder(folder->output, merged.unfinished.c_str());
    OutputFolder *to = from ? OpenSubfolder(folder->output, label.c_str()) : nullptr;
    if (to != nullptr)
        for (const std::string &name : merged.made)
            if (TakeResult(folder, Shown(folder, label, name),
                           PutInPlace(from, name, to, name, folder->replaces)))
                folder->count++;
    CloseFolder(from);
    CloseFolder(to);
    if (to != nullptr)
        DeleteSubfolder(folder->output, merged.unfinished.c_str());
    return to != nullptr;
}

static void DropFolder(const SaveFolder *folder, const LabelFolder &dropped)
{
    for (const std::string &name : dropped.made)
        DeleteInFolder(dropped.folder, name.c_str());
    CloseFolder(dropped.folder);
    DeleteSubfolder(folder->output, dropped.unfinished.c_str());
}

static void FinishPlace(SaveFolder *folder, const std::string &label, const LabelFolder &finished)
{
    const bool isUnfinished = finished.folder != nullptr && !finished.unfinished.empty();
    if (isUnfinished && (folder->isDiskFull || finished.made.empty())) {
        DropFolder(folder, finished);
        return;
    }
    CloseFolder(finished.folder);
    if (!isUnfinished)
        return;
    const MoveResult moved = MoveBetween(folder->output, finished.unfinished.c_str(),
                                         folder->output, label.c_str(), false);
    if (moved == MoveDone)
        folder->count += finished.made.size();
    else if (!(moved == MoveExists && MergeFolder(folder, label, finished)))
        FaultOf(folder, Shown(folder, label),
                "The folder cannot be put in place and is left as " + finished.unfinished + ": " +
                    FileErrorText() + ".");
}

std::string SaveFile(SaveFolder *folder, const std::string &label, const std::string &name,
                     const std::string &extension,
                     const std::function<WriteOutcome(FILE *)> &writer)
{
    LabelFolder *place = OpenOnce(folder) ? FindFolder(folder, label) : nullptr;
    if (place == nullptr || place->folder == nullptr)
        return "";
    const std::string encoded = EncodeFileName(name);
    std::string fileName = NextFileName(&place->names, encoded, extension);
    std::string shown = Shown(folder, label, fileName);
    if (place->unfinished.empty()) {
        if (TakeResult(
                folder, shown,
                MakeFile(place->folder, fileName, writer, &folder->buffer, folder->replaces)))
            folder->count++;
        return shown;
    }
    // Told before it is there, so that no want of memory leaves one that nobody knows of.
    place->made.push_back(fileName);
    FILE *stream = CreateNewFile(place->folder, fileName.c_str());
    while (stream == nullptr && NameWasTaken()) {
        fileName = NextFileName(&place->names, encoded, extension);
        shown = Shown(folder, label, fileName);
        place->made.back() = fileName;
        stream = CreateNewFile(place->folder, fileName.c_str());
    }
    if (!TakeResult(folder, shown,
                    FillFile(place->folder, stream, fileName, writer, &folder->buffer)))
        place->made.pop_back();
    return shown;
}

void FinishLabel(SaveFolder *folder, const std::string &label)
{
    const auto found = folder->labels.find(label);
    if (found == folder->labels.end())
        return;
    const LabelFolder finished = std::move(found->second);
    folder->labels.erase(found);
    FinishPlace(folder, label, finished);
}

ExitStatus FinishSaveFolder(SaveFolder *folder)
{
    // A step that runs out of memory does not stop the next one.
    for (const auto &[label, finished] : folder->labels) {
        try {
            FinishPlace(folder, label, finished);
        } catch (const std::bad_alloc &) {
            PrintNoMemory(folder->err);
            folder->status = ExitFailed;
        }
    }
    CloseFolder(folder->output);
    folder->labels.clear();
    folder->output = nullptr;
    if (folder->inTheWay == 1)
        FaultOf(folder, folder->firstInTheWay, "The file is there already; --force replaces it.");
    else if (folder->inTheWay > 1)
        FaultOf(folder, folder->firstInTheWay,
                "This file and " + std::to_string(folder->inTheWay - 1) +
                    " more are there already; --force replaces them.");
    return folder->status;
}
