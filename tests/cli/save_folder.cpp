// What another run puts in the way while a folder is filled.
#include "cli/save_folder.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>

namespace fs = std::filesystem;

// What a write that finds the disk full leaves.
static WriteOutcome FillDisk()
{
#ifdef _WIN32
    _doserrno = ERROR_DISK_FULL;
#else
    errno = ENOSPC;
#endif
    return WriteShort;
}

TEST(SaveFolder, MeetsWhatAnotherRunPutsInItsPlaceMeanwhile)
{
    struct Case {
        const char *theirs; // what the other run makes; NULL: this one's writes find the disk full
        bool replaces;
        size_t count;
        std::string files, told;
    };
    const Case cases[] = {
        {"", false, 2, "out/KIND/a.BIN=a out/KIND/b.BIN=b ", ""},
        {"KIND/c.BIN", false, 2, "out/KIND/a.BIN=a out/KIND/b.BIN=b out/KIND/c.BIN=t ", ""},
        {"KIND/b.BIN", false, 1, "out/KIND/a.BIN=a out/KIND/b.BIN=t ", "b.BIN: The file is there"},
        {"KIND/b.BIN", true, 2, "out/KIND/a.BIN=a out/KIND/b.BIN=b ", ""},
        {".unfinished-1/b.BIN", false, 2, "out/KIND/a.BIN=a out/KIND/b (2).BIN=b out/KIND/b.BIN=t ",
         ""},
        {nullptr, false, 0, "", "KIND"},
        {"KIND", false, 0, "out/.unfinished-1/a.BIN=a out/.unfinished-1/b.BIN=b out/KIND=t ",
         "KIND: The folder cannot be put in place and is left as .unfinished-1: "},
    };
    for (const Case &row : cases) {
        SCOPED_TRACE(row.files);
        const TempFolder place;
        FILE *err = fopen(place.Path("err").c_str(), "w+b");
        SaveFolder folder = {};
        folder.err = err;
        folder.name = place.Path("out");
        folder.isGiven = true;
        folder.replaces = row.replaces;
        for (const char *name : {"a", "b"})
            SaveFile(&folder, "KIND", name, ".BIN", [&](FILE *file) {
                if (row.theirs != nullptr && row.theirs[0] != 0)
                    place.Write(std::string("out/") + row.theirs, Text("theirs"));
                fputs(name, file);
                return row.theirs == nullptr ? FillDisk() : WriteDone;
            });
        const ExitStatus status = FinishSaveFolder(&folder);
        fclose(err);
        const Bytes told = ReadFile(place.path / "err");
        std::string files;
        for (const std::string &name : place.Files())
            if (name != "err")
                files += name + "=" + (char)ReadFile(place.path / name)[0] + " ";
        EXPECT_EQ(files, row.files);
        EXPECT_EQ(folder.count, row.count);
        EXPECT_EQ(folder.isDiskFull, row.theirs == nullptr);
        EXPECT_EQ(fs::exists(place.path / "out/.unfinished-1"),
                  files.find(".unf") != std::string::npos);
        EXPECT_NE(std::string(told.begin(), told.end()).find(row.told), std::string::npos);
        EXPECT_EQ(told.empty(), row.told.empty());
        EXPECT_EQ(status, row.count == 2 ? ExitDone : ExitFailed);
    }
}
