// Draws the program's own pictures: make_artwork FOLDER writes folder_closed.bmp,
// folder_selected.bmp, quillmoor.ico and splitter.cur, which lie in resources/, and
// about_strip.bmp and message.ico, which lie in platform/host/, and the icon as quillmoor_SIZE.png
// for desktops.
#include "samples/artwork/program_artwork.h"

#include <cstdio>
#include <string>

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
        {"quillmoor_32.png", MakePng(DrawProgramIcon(32))},
        {"quillmoor_48.png", MakePng(DrawProgramIcon(48))},
        {"quillmoor_128.png", MakePng(DrawProgramIcon(128))},
    };
    for (const auto &file : files) {
        std::string path = std::string(arguments[1]) + "/" + file.name;
        if (!WriteBytes(path.c_str(), file.bytes)) {
            fprintf(stderr, "make_artwork: cannot write %s\n", path.c_str());
            return 1;
        }
    }
    return 0;
}
