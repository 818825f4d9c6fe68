#include "cli/strings.h"

#include "cli/listing.h"
#include "cli/numbers.h"
#include "cli/reading.h"
#include "cli/texts.h"
#include "exe/catalog.h"
#include "exe/language_tags.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/page_text.h"
#include "platform/utf8.h"

#include <CLI/CLI.hpp>

// Whether a tag is the wanted one or a kind of it: de-AT is one of de (RFC 4647, basic filtering).
static bool IsKindOf(const char *tag, const std::string &wanted)
{
    const std::string begin = std::string(tag).substr(0, wanted.size());
    return FoldName(begin) == FoldName(wanted) &&
           (tag[begin.size()] == 0 || tag[begin.size()] == '-');
}

static bool IsLanguageWanted(WORD language, const std::string &wanted)
{
    const char *tag = LanguageTag(language);
    return wanted.empty() || wanted == std::to_string(language) ||
           (tag != nullptr && IsKindOf(tag, wanted));
}

// Checks what is given for the parser, and makes a number decimal. Returns what is wrong with it,
// empty for nothing.
static std::string CheckLanguage(std::string &word)
{
    unsigned number = 0;
    if (ReadNumber(word, 0xFFFF, &number)) {
        word = std::to_string(number);
        return "";
    }
    for (number = 0; number <= 0xFFFF && !word.empty(); number++)
        if (IsLanguageWanted((WORD)number, word))
            return "";
    return SafeText(word) + " is no language; give a tag as en-US, or Windows' number as 0x409.";
}

CLI::App *AddStringsCommand(CLI::App &app, StringsOptions *options)
{
    CLI::App *strings =
        app.add_subcommand("strings", "Print the texts of string tables and message tables");
    strings->add_flag("--json", options->json, "Print one JSON object a line");
    strings->add_option("--language", options->language, "Print only this language")
        ->type_name("TAG|NUMBER")
        ->transform(CLI::Validator(CheckLanguage, "", ""));
    AddCodePageOption(strings, "Code page of texts that are not UTF-16, as in 16-bit files",
                      &options->codePage);
    strings->add_option("FILE", options->files, "Executables or libraries")->required();
    return strings;
}

// One run of the command over one file.
struct StringsRun {
    const StringsOptions *options;
    const std::string *path;
    FILE *err;
    Listing listing;
    unsigned long long left; // bytes that blocks and tables of the file may still have together
    bool isDamaged;
};

// Text on a line of its own, so that each text has one form: backslashes doubled, and what would
// end the line, steer the terminal or turn the text's direction in the escapes of JSON.
static std::string EscapeLine(const std::string &text)
{
    std::string doubled;
    for (const char letter : text) {
        if (letter == '\\')
            doubled += "\\\\";
        else if (letter == '\n' || letter == '\r' || letter == '\t')
            doubled += letter == '\n' ? "\\n" : letter == '\r' ? "\\r" : "\\t";
        else
            doubled += letter;
    }
    return EscapeSteering(doubled);
}

static void AppendLine(StringsRun *run, const SurveyedResource &resource, const TableText &text)
{
    const char *tag = LanguageTag(resource.language);
    std::string line = EscapeLine(TextId(resource, text));
    line += '\t' + (tag != nullptr ? std::string(tag) : std::to_string(resource.language));
    AppendText(&run->listing, line + '\t' + EscapeLine(text.text) + '\n');
}

static void AppendTextObject(StringsRun *run, const SurveyedResource &resource,
                             const TableText &text)
{
    const bool isString = HoldsStrings(resource);
    JsonObject object;
    AddTextField(&object, "file", *run->path);
    AddTextField(&object, "type", isString ? "string" : "message");
    if (isString && resource.name.isText)
        AddTextField(&object, "id", TextId(resource, text));
    else
        AddField(&object, "id", std::to_string(text.id));
    AddLanguageFields(&object, resource.language);
    AddTextField(&object, "text", text.text);
    AppendObject(&run->listing, object);
}

static void TellDamage(StringsRun *run, const SurveyedResource &resource, const char *what)
{
    PrintFault(run->err, *run->path, DamageText(resource, what));
    run->isDamaged = true;
}

// Prints the texts of the resource. Returns how many there are.
static size_t ListTexts(StringsRun *run, FilePages *pages, const Survey &survey,
                        const SurveyedResource &resource)
{
    std::vector<TableText> texts;
    if (resource.size > run->left) {
        TellDamage(run, resource, textsPastBound);
        return 0;
    }
    run->left -= resource.size;
    pages->isUnreadable = false;
    if (!ReadTexts(pages, survey, resource, run->options->codePage, &texts))
        TellDamage(run, resource,
                   pages->isUnreadable ? "could not be read to its end."
                                       : "is damaged; what could be read is printed.");
    for (const TableText &text : texts) {
        if (run->options->json)
            AppendTextObject(run, resource, text);
        else
            AppendLine(run, resource, text);
    }
    return texts.size();
}

static bool IsWanted(const StringsOptions &options, const SurveyedResource &resource)
{
    return (HoldsStrings(resource) || HoldsMessages(resource)) &&
           IsLanguageWanted(resource.language, options.language);
}

static void ListSurveyed(StringsRun *run, FilePages *pages, const Survey &survey)
{
    size_t count = 0;
    run->left = KeptBytesLimit(pages->length);
    if (run->options->files.size() > 1 && !run->options->json)
        AppendText(&run->listing, SafeText(*run->path) + "\n");
    for (const SurveyedResource &resource : survey.resources)
        if (IsWanted(*run->options, resource) && !run->listing.failed)
            count += ListTexts(run, pages, survey, resource);
    if (count == 0 && !run->isDamaged)
        PrintFault(run->err, *run->path,
                   run->options->language.empty() ? "It holds no strings."
                                                  : "It holds no strings of that language.");
}

static void TellRefusal(StringsRun *run, const std::string &reason)
{
    run->isDamaged = true;
    if (!run->options->json) {
        PrintFault(run->err, *run->path, reason);
        return;
    }
    JsonObject object;
    AddTextField(&object, "file", *run->path);
    AddTextField(&object, "reason", reason);
    AppendObject(&run->listing, object);
}

static void SurveyAndList(StringsRun *run, FILE *file)
{
    FilePages pages;
    Survey survey;
    std::string reason;
    OpenPages(&pages, file);
    const ReadingResult result =
        SurveyExecutable(&pages, run->options->codePage, true, &survey, &reason);
    if (result == ReadingRefused) {
        TellRefusal(run, reason);
        return;
    }
    if (result == ReadingDone && !reason.empty()) {
        run->isDamaged = true;
        PrintFault(run->err, *run->path, reason);
    }
    ListSurveyed(run, &pages, survey);
}

// Prints the texts of one file.
static void ListFile(StringsRun *run)
{
    std::string reason;
    FILE *file = OpenExecutable(*run->path, &reason);
    if (file == nullptr) {
        TellRefusal(run, reason);
        return;
    }
    try {
        SurveyAndList(run, file);
    } catch (...) {
        fclose(file);
        throw;
    }
    fclose(file);
}

ExitStatus RunStrings(const StringsOptions &options, FILE *out, FILE *err)
{
    ExitStatus status = ExitDone;
    StringsRun run = {&options, nullptr, err, {out, "", false}, 0, false};
    for (const std::string &path : options.files) {
        run.path = &path;
        run.isDamaged = false;
        ListFile(&run);
        if (run.isDamaged)
            status = ExitFailed;
        if (!FinishListing(&run.listing, err))
            return ExitFailed;
    }
    return status;
}
