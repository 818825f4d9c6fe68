// The part of the save command that saves everything that a file carries.
#pragma once

#include "cli/save_folder.h"
#include "exe/file_pages.h"
#include "exe/surveyed.h"

struct AllSaving {
    FilePages *pages;
    const Survey *survey;
    SaveFolder *folder;
    UINT codePage; // of texts that are not UTF-16; 0: the ANSI page, or their own
    // Whether a resource of this name, a text or a number in decimal, is asked for.
    std::function<bool(const std::string &name)> isWanted;
    // Called before each resource with the number of those before it; 0 ends the saving.
    std::function<bool(size_t done)> goOn;
};

// Saves each resource of a survey in its form (cli/save_form.h) below a folder for its type: the
// standard name that list --all prints, the number or the text. A resource whose language is not
// the one of the first of its type and name has it in its name. Groups of icons and cursors come
// first: pictures that are in the files of theirs are not saved again. Of resources that together
// are longer than what is kept of a file of this size the last are not saved, which is a failure.
// What is not in the file, and what of it is damaged, is told.
void SaveEverything(const AllSaving *saving);
