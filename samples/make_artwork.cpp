// Draws the program's own pictures: make_artwork FOLDER writes folder_closed.bmp,
// folder_selected.bmp, quillmoor.ico and splitter.cur, which lie in resources/, and
// about_strip.bmp and message.ico, which lie in platform/host/, and the icon as quillmoor_SIZE.png
// for desktops.
#include "samples/artwork/program_artwork.h"

#include <cstdio>
#include <string>

static bool WriteArtwork(const std::string &path, const Bytes &bytes)
{
    if (WriteBytes(path.c_str(), bytes))
        return true;
    fprintf(stderr, "make_artwork: cannot write %s\n", path.c_str());
    return false;
}

int main(int count, char **arguments)
{
    if (count != 2) {
        fprintf(stderr, "usage: make_artwork FOLDER\n");
        return 2;
    }
    const struct {
        const char *name;
        Bytes bytes;
    } files[] = {
        {"folder_closed.bmp", MakeBmpFile(MakeDib(DrawFolder(false), 8))},
        {"folder_selected.bmp", MakeBmpFile(MakeDib(DrawFolder(true), 8))},
        {"quillmoor.ico", MakeIcoFile(DrawProgramIcon(32), 32)},
        {"splitter.cur", MakeCurFile(DrawSplitCursor(), 15, 15)},
        {"about_strip.bmp", MakeBmpFile(MakeDib(DrawAboutStrip(), 24))},
        {"message.ico", MakeIcoFile(DrawMessageIcon(), 32)},
    };
    const std::string folder = arguments[1];
    bool written = true;
    for (const auto &file : files)
        written &= WriteArtwork(folder + "/" + file.name, file.bytes);
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256})
        written &= WriteArtwork(folder + "/quillmoor_" + std::to_string(size) + ".png",
                                MakePng(DrawProgramIcon(size)));
    return written ? 0 : 1;
}
