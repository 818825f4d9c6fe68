#include "cli/reading.h"

#include "dialogs/texts.h"
#include "exe/catalog.h"
#include "exe/probe.h"
#include "exe/refusal.h"
#include "platform/console.h"
#include "platform/files.h"

#include <cstring>
#include <vector>

std::string TextToUtf8(const char *text)
{
    std::vector<WCHAR> units(strlen(text) + 1);
    const int count = MultiByteToWideChar(CP_ACP, 0, text, -1, units.data(), (int)units.size());
    std::string utf8;
    // A code page holds no character that takes two code units.
    for (int i = 0; i + 1 < count; i++) {
        const unsigned unit = units[(size_t)i];
        if (unit < 0x80) {
            utf8 += (char)unit;
        } else if (unit < 0x800) {
            utf8 += (char)(0xC0 | unit >> 6);
            utf8 += (char)(0x80 | (unit & 0x3F));
        } else {
            utf8 += (char)(0xE0 | unit >> 12);
            utf8 += (char)(0x80 | (unit >> 6 & 0x3F));
            utf8 += (char)(0x80 | (unit & 0x3F));
        }
    }
    return utf8;
}

void PrintFault(FILE *err, const std::string &path, const std::string &text)
{
    PrintText(err, "quillmoor-cli: " + SafeText(err, path) + ": " + SafeText(err, text) + "\n");
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
