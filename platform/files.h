// What the two systems do differently with files: separators, names, 64-bit positions, and the
// creation of files that never follows a link. Beside the code that they share there is a source
// file for each system.
//
// Names are "8-bit" where they are in the program's own form (the ANSI code page on Windows, the
// system's bytes on Linux) and "UTF-8" where they can name any file on either system (on Linux the
// two are the same bytes).
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

// --- paths, 8-bit ---

extern const char pathSeparator;

// Whether the byte at this place separates the parts of a path.
bool IsSeparator(const char *path, size_t at);

// The length in bytes of the path's drive and folder, with the last separator; 0 for a bare file
// name.
size_t FolderLength(const char *path);

// The path's extension, from the last dot of its file name; its terminator when there is none. It
// points into path.
const char *PathExtension(const char *path);

// Appends the separator to a folder that is not empty and does not end with one. Returns false,
// with the text unchanged, when it does not fit into size bytes.
bool EndWithSeparator(char *folder, size_t size);

// The path as it stands in an address after "file:///". On Linux without the slash that begins it,
// and each byte that has a meaning of its own in addresses, or none, is %XX; on Windows unchanged.
std::string AddressPath(const char *path);

// A UTF-8 file name with its letters folded, so that two names which a file system without case
// takes for one become equal.
std::string FoldName(const std::string &name);

// --- the current folder ---

struct CurrentFolder;

// Makes one of the system's own folders the current one: Windows looks for programs in that too,
// and the user's may hold whatever came with a file. Gives what was; NULL, with nothing changed, on
// failure.
CurrentFolder *LeaveCurrentFolder();

// Goes back and frees it. NULL is allowed. Where the folder is no more, the current one stays.
void ReturnToFolder(CurrentFolder *folder);

// --- open files ---

// Opens a regular file for binary reading by its UTF-8 name. The caller closes it. NULL on failure,
// and at once for a folder, a device, a pipe or a socket: FileErrorText says why.
FILE *OpenForReading(const char *name);

// The same by an 8-bit path.
FILE *OpenPathForReading(const char *path);

// From this call on a write that would pass a limit on the size of files fails like any other;
// before it, the system may end the process.
void FailWritesPastLimit();

// An open file's length in bytes; -1 on failure. The position is not kept: it is the end.
int64_t FileLength(FILE *file);

// Moves to an offset in bytes from the start. Returns false on failure.
bool SeekTo(FILE *file, uint64_t offset);

// Reads `size` bytes from the file's start into memory that holds zeroes. What the file system
// knows to be a hole of a sparse file is passed over, so that it costs no memory. Returns false,
// with a part read, when the file is shorter or cannot be read. The file's position is not kept.
bool ReadOverZeroes(FILE *file, void *zeroes, size_t size);

// What FileErrorText says of what is no regular file.
inline constexpr char notRegularText[] = "Not a regular file";

// Why the last failed call that opens, creates, makes or moves something failed, as UTF-8 text. A
// call that succeeds leaves the reason as it was. The text belongs to this function, and its next
// call overwrites it.
const char *FileErrorText();

// Whether that was because the name is taken, or because the disk, or the user's part of it, is
// full.
bool NameWasTaken();
bool DiskWasFull();

// Takes over from the C library why a stream could not be written to or closed, right after that.
void NoteStreamError();

// --- folders that are read; names are UTF-8 ---

// Whether a path leads to a folder.
bool IsFolder(const char *path);

// A regular file or a folder.
struct FolderEntry {
    std::string name;
    bool isFolder;
};

// Lists the regular files and the folders in a folder, in no order. What leads elsewhere (a link, a
// folder that stands for another place) is left out. Returns false on failure, with a part listed.
bool ListFolder(const char *path, std::vector<FolderEntry> *items);

// --- folders that files are created in; names are UTF-8 ---

struct OutputFolder;

// Opens a folder, making it and its parents when they are missing. The caller closes it. NULL on
// failure.
OutputFolder *OpenFolder(const char *path);

// Opens the folder `name` (one part, no separators) of the current folder, making it when it is
// missing; a link in its place is refused. The caller closes it. NULL on failure.
OutputFolder *OpenFolderHere(const char *name);

// Opens the folder `name` (one part, no separators) inside another; a link in its place is refused.
// The caller closes it. NULL on failure.
OutputFolder *OpenSubfolder(const OutputFolder *folder, const char *name);

// The same for a folder that is made now; NULL also when the name is taken.
OutputFolder *MakeSubfolder(const OutputFolder *folder, const char *name);

// Makes a new folder inside another under a name that nothing there has, and gives that name. The
// caller closes it, and moves it to its name when it is whole. NULL on failure.
OutputFolder *MakeUnfinishedFolder(const OutputFolder *folder, std::string *name);

// Closes a folder; NULL is allowed. What is in it stays.
void CloseFolder(OutputFolder *folder);

// Creates a file for binary writing, only when nothing has that name. The caller closes it. NULL on
// failure.
FILE *CreateNewFile(const OutputFolder *folder, const char *name);

// Creates a file for binary writing under a name that nothing there has, and gives that name. The
// caller closes it. NULL on failure.
FILE *CreateUnfinishedFile(const OutputFolder *folder, std::string *name);

// Opens a file that is there and is empty for binary writing, so that whoever made it, and may hold
// it open, finds in it what is written. The caller closes it. NULL on failure, for a link, for what
// is no file and for one that holds anything.
FILE *OpenEmptyFile(const OutputFolder *folder, const char *name);

enum MoveResult {
    MoveDone,
    MoveExists, // the new name is taken, and replacing was not asked for
    MoveFailed, // FileErrorText says why; everything is as it was
};

// Gives a file or a closed folder of one folder a name in another of the same disk, or a new one
// where it is. A link that has the new name is replaced itself, never what it leads to.
MoveResult MoveBetween(const OutputFolder *from, const char *oldName, const OutputFolder *to,
                       const char *newName, bool replace);

// Whether something, a link also, has the name; 0 also when that cannot be found out.
bool ExistsInFolder(const OutputFolder *folder, const char *name);

// Deletes a file of the folder; of a link, the link itself. A failure is not told.
void DeleteInFolder(const OutputFolder *folder, const char *name);

// Deletes an empty folder of the folder, which is closed. A failure is not told.
void DeleteSubfolder(const OutputFolder *folder, const char *name);
