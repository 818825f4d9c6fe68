#include "cli/finished_file.h"

#include "cli/path_text.h"

#include <new>

static FileResult Failed(const char *what)
{
    return {FileFailed, std::string(what) + ": " + FileErrorText() + "."};
}

FileResult FillFile(const OutputFolder *folder, FILE *stream, const std::string &name,
                    const std::function<WriteOutcome(FILE *)> &writer, std::vector<char> *buffer)
{
    if (stream == nullptr)
        return Failed("The file cannot be created");
    if (buffer != nullptr)
        setvbuf(stream, buffer->data(), _IOFBF, buffer->size());
    WriteOutcome outcome;
    try {
        outcome = writer(stream);
    } catch (const std::bad_alloc &) {
        fclose(stream);
        DeleteInFolder(folder, name.c_str());
        return {FileNoMemory};
    }
    const bool closed = fclose(stream) == 0;
    if (outcome == WriteDone && closed)
        return {FileDone};
    NoteStreamError();
    DeleteInFolder(folder, name.c_str());
    if (outcome == WriteDataUnavailable)
        return {FileFailed, "The resource's data are not available."};
    FileResult result = Failed("The file cannot be written");
    result.isDiskFull = DiskWasFull();
    return result;
}

FileResult PutInPlace(const OutputFolder *from, const std::string &oldName, const OutputFolder *to,
                      const std::string &name, bool replace)
{
    const MoveResult moved = MoveBetween(from, oldName.c_str(), to, name.c_str(), replace);
    if (moved == MoveDone)
        return {FileDone};
    // Before anything asks for memory.
    DeleteInFolder(from, oldName.c_str());
    if (moved == MoveExists)
        return {FileInTheWay};
    return Failed("The file cannot be put in place");
}

FileResult MakeFile(const OutputFolder *folder, const std::string &name,
                    const std::function<WriteOutcome(FILE *)> &writer, std::vector<char> *buffer,
                    bool replace)
{
    std::string beside;
    FILE *stream = CreateUnfinishedFile(folder, &beside);
    const FileResult filled = FillFile(folder, stream, beside, writer, buffer);
    if (filled.outcome != FileDone)
        return filled;
    return PutInPlace(folder, beside, folder, name, replace);
}

std::string
UseFolderOf(const std::string &path,
            const std::function<void(const OutputFolder *folder, const std::string &name)> &use)
{
    const std::filesystem::path parts = PathOf(path);
    if (!parts.has_filename())
        return "That is a folder; the name of a file is wanted.";
    const std::string parent = Utf8Of(parts.parent_path());
    OutputFolder *folder = OpenFolder(parent.empty() ? "." : parent.c_str());
    if (folder == nullptr)
        return std::string("The folder cannot be used: ") + FileErrorText() + ".";
    try {
        use(folder, Utf8Of(parts.filename()));
    } catch (...) {
        CloseFolder(folder);
        throw;
    }
    CloseFolder(folder);
    return "";
}
