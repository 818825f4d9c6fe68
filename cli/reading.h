// Opening an executable for a command: reading it into the catalogue or surveying it, and telling
// why not.
#pragma once

#include "exe/survey.h"

#include <cstdio>
#include <string>

enum ReadingResult {
    ReadingRefused, // the reason tells why
    ReadingEmpty,   // a healthy file with nothing to work on; the reason tells what it holds
    ReadingDone,    // the reason is empty, or tells that the file is damaged
};

// Opens a file for reading; the caller closes it. NULL, with the reason, when it cannot be opened.
FILE *OpenExecutable(const std::string &path, std::string *reason);

struct ReadingOptions {
    bool salvage = false; // keep what a damaged file gave
    // What the command does with --all, where it has that ("lists"): a reason may name it.
    const char *allDoes = nullptr;
};

// Reads the file into openCatalog, which is empty before and, unless ReadingDone is returned,
// afterwards, and into the tree, which may be NULL. A reason is a line for people, without a line
// end; it names the option that reads what is refused.
ReadingResult ReadExecutable(FILE *file, HWND tree, const ReadingOptions &options,
                             std::string *reason);

// The same for a survey of the file, whose names are in a code page when it is an NE file (0: the
// ANSI page).
ReadingResult SurveyExecutable(FilePages *pages, UINT codePage, bool salvage, Survey *survey,
                               std::string *reason, const SurveyChoice *choice = nullptr);

// Why a file gave nothing, or not all (exe/refusal.h), as UTF-8.
std::string FailureText();

// Prints "quillmoor-cli: PATH: TEXT" as one line.
void PrintFault(FILE *err, const std::string &path, const std::string &text);

// Prints that there is not enough memory, without asking for any.
void PrintNoMemory(FILE *err);

// A text of a code page (0: the ANSI page) as UTF-8.
std::string TextToUtf8(const char *text, UINT codePage = 0);

// Whether an open file, whose position is not kept, is an NE file, which says in no code page what
// it says.
bool IsNeFile(FILE *file);
