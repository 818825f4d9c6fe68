#include "cli/reading.h"

#include "exe/catalog.h"
#include "exe/probe.h"
#include "exe/refusal.h"
#include "platform/console.h"
#include "platform/files.h"
#include "program/texts.h"

#include <algorithm>
#include <cstring>
#include <vector>

std::string TextToUtf8(const char *text)
{
    std::vector<WCHAR> units(strlen(text) + 1);
    const int count = MultiByteToWideChar(CP_ACP, 0, text, -1, units.data(), (int)units.size());
    // The terminator is left out; a code unit takes up to three bytes.
    std::string utf8((size_t)std::max(count - 1, 0) * 3, 0);
    if (count > 1)
        utf8.resize((size_t)WideCharToMultiByte(CP_UTF8, 0, units.data(), count - 1, utf8.data(),
                                                (int)utf8.size(), nullptr, nullptr));
    return utf8;
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

static std::string FailureText()
{
    char reason[REASON_SIZE];
    DescribeFailure(reason);
    return TextToUtf8(reason);
}

static void PrintRefusal(const std::string &path, ProbeOutcome outcome, FILE *err)
{
    UINT ids[2];
    const int count = ProbeMessageIds(outcome, openCatalog.count, ids);
    for (int i = 0; i < count; i++)
        PrintFault(err, path, TextToUtf8(LoadMessageText(ids[i])));
    PrintFault(err, path, FailureText());
}

int ReadExecutable(const std::string &path, HWND tree, int salvage, FILE *err)
{
    FILE *file = OpenForReading(path.c_str());
    if (file == nullptr) {
        PrintFault(err, path, std::string("It cannot be opened: ") + FileErrorText() + ".");
        return 0;
    }
    const ProbeOutcome outcome = ProbeFile(tree, file);
    fclose(file);
    if (outcome == ProbeRead && openCatalog.count > 0)
        return 1;
    if (outcome == ProbeFailed && openCatalog.count > 0 && salvage) {
        PrintFault(err, path, "The file is damaged; what could be read is kept. " + FailureText());
        return 1;
    }
    PrintRefusal(path, outcome, err);
    ReleaseCatalog(&openCatalog);
    return 0;
}
