#include "cli/reading.h"

#include "exe/catalog.h"
#include "exe/refusal.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/page_text.h"

#include <cstring>
#include <memory>

std::string TextToUtf8(const char *text, UINT codePage)
{
    return PageTextToUtf8(codePage, text, strlen(text));
}

bool IsNeFile(FILE *file)
{
    const auto pages = std::make_unique<FilePages>();
    ExecutableKind kind;
    OpenPages(pages.get(), file);
    return IdentifyFile(pages.get(), &kind) == ProbeRead && kind.format == FormatNe;
}

void PrintFault(FILE *err, const std::string &path, const std::string &text)
{
    PrintText(err, "quillmoor-cli: " + SafeText(path) + ": " + SafeText(text) + "\n");
}

void PrintNoMemory(FILE *err)
{
    fputs("quillmoor-cli: There is not enough memory.\n", err);
    fflush(err);
}

FILE *OpenExecutable(const std::string &path, std::string *reason)
{
    FILE *file = OpenForReading(path.c_str());
    if (file == nullptr)
        *reason = std::string("It cannot be opened: ") + FileErrorText() + ".";
    return file;
}

std::string FailureText()
{
    char reason[REASON_SIZE];
    DescribeFailure(reason);
    return TextToUtf8(reason);
}

// What a survey makes of a file that the catalogue's reader has nothing of.
static std::string AdviseAll(FILE *file, const std::string &whenRead)
{
    FilePages pages;
    Survey survey;
    OpenPages(&pages, file);
    const ProbeOutcome outcome = SurveyFile(&pages, 0, &survey);
    if (survey.resources.empty())
        return "";
    return outcome == ProbeRead ? whenRead : " --all --salvage keeps what could be read.";
}

ReadingResult ReadExecutable(FILE *file, HWND tree, const ReadingOptions &options,
                             std::string *reason)
{
    ProbeOutcome outcome = ProbeFile(tree, file);
    // What of a 16-bit file found no memory is left out of what was read.
    if (outcome == ProbeRead && NotedFailure() == FailureMemory)
        outcome = ProbeFailed;
    const bool isEmpty = openCatalog.count == 0;
    *reason = "";
    if (outcome == ProbeRead && !isEmpty)
        return ReadingDone;
    *reason = FailureText();
    if (outcome == ProbeFailed && !isEmpty && options.salvage) {
        *reason = "The file is damaged; what could be read is kept. " + *reason;
        return ReadingDone;
    }
    ReleaseCatalog(&openCatalog);
    if (outcome == ProbeFailed && !isEmpty)
        *reason += " --salvage keeps what could be read.";
    else if (options.allDoes != nullptr)
        *reason += AdviseAll(file, outcome == ProbeRead
                                       ? std::string(" --all ") + options.allDoes + " them."
                                       : " --all reads it.");
    return outcome == ProbeRead ? ReadingEmpty : ReadingRefused;
}

ReadingResult SurveyExecutable(FilePages *pages, UINT codePage, bool salvage, Survey *survey,
                               std::string *reason, const SurveyChoice *choice)
{
    const ProbeOutcome outcome = SurveyFile(pages, codePage, survey, choice);
    const bool isEmpty = survey->resources.empty();
    *reason = "";
    if (outcome == ProbeRead && !isEmpty)
        return ReadingDone;
    *reason = FailureText();
    if (outcome == ProbeFailed && !isEmpty && salvage) {
        *reason = "The file is damaged; what could be read is kept. " + *reason;
        return ReadingDone;
    }
    if (!isEmpty)
        *reason += " --salvage keeps what could be read.";
    return outcome == ProbeRead ? ReadingEmpty : ReadingRefused;
}
