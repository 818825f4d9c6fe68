#include "cli/strings.h"

#include "cli/reading.h"
#include "content/message_table.h"
#include "exe/catalog.h"
#include "exe/language_tags.h"
#include "exe/refusal.h"
#include "exe/survey.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/page_text.h"
#include "platform/utf8.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <nlohmann/json.hpp>

#define TYPE_STRING 6
#define TYPE_MESSAGE_TABLE 11
#define PART_SIZE 65536

// The number that a word is whole, decimal or with 0x hexadecimal, at most limit. Returns 0 when it
// is none.
static int ReadNumber(const std::string &word, unsigned limit, unsigned *number)
{
    const int isHex = word.rfind("0x", 0) == 0 || word.rfind("0X", 0) == 0;
    const char *first = word.data() + (isHex ? 2 : 0), *last = word.data() + word.size();
    const auto [end, error] = std::from_chars(first, last, *number, isHex ? 16 : 10);
    return error == std::errc() && end == last && *number <= limit;
}

// Whether a tag is the wanted one or a kind of it: de-AT is one of de (RFC 4647, basic filtering).
static int IsKindOf(const char *tag, const std::string &wanted)
{
    const std::string begin = std::string(tag).substr(0, wanted.size());
    return FoldName(begin) == FoldName(wanted) &&
           (tag[begin.size()] == 0 || tag[begin.size()] == '-');
}

static int IsLanguageWanted(WORD language, const std::string &wanted)
{
    const char *tag = LanguageTag(language);
    return wanted.empty() || wanted == std::to_string(language) ||
           (tag != nullptr && IsKindOf(tag, wanted));
}

// Check what is given for the parser, and make a number decimal. They return what is wrong with it,
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

static std::string CheckCodePage(std::string &word)
{
    unsigned number = 0;
    if (!ReadNumber(word, 0xFFFF, &number) || !KnowsCodePage(number))
        return SafeText(word) + " is no code page that is known; give its number as 1251.";
    word = std::to_string(number);
    return "";
}

CLI::App *AddStringsCommand(CLI::App &app, StringsOptions *options)
{
    CLI::App *strings =
        app.add_subcommand("strings", "Print the texts of string tables and message tables");
    strings->add_flag("--json", options->json, "Print one JSON object a line");
    strings->add_option("--language", options->language, "Print only this language")
        ->type_name("TAG|NUMBER")
        ->transform(CLI::Validator(CheckLanguage, "", ""));
    strings
        ->add_option("--code-page", options->codePage,
                     "Code page of texts that are not UTF-16, as in 16-bit files")
        ->type_name("NUMBER")
        ->transform(CLI::Validator(CheckCodePage, "", ""));
    strings->add_option("FILE", options->files, "Executables or libraries")->required();
    return strings;
}

// One run of the command over one file.
struct StringsRun {
    const StringsOptions *options;
    const std::string *path;
    FILE *err;
    FILE *out;
    std::string part;        // what is printed, handed on a part at a time
    int failed;              // nothing more is wanted
    unsigned long long left; // bytes that blocks and tables of the file may still have together
    int isDamaged;
};

static void Flush(StringsRun *run)
{
    if (!run->failed && !run->part.empty())
        run->failed = !PrintText(run->out, run->part);
    run->part.clear();
}

static void Append(StringsRun *run, const std::string &text)
{
    run->part += text;
    if (run->part.size() >= PART_SIZE)
        Flush(run);
}

// Adds text with the letters that steer text escaped; other letters stay as they are.
static void AppendEscaped(std::string *escaped, const std::string &text)
{
    for (size_t at = 0; at < text.size();) {
        const Utf8Letter letter = LetterAt(text, at);
        if (SteersText(letter.code)) {
            char code[8];
            snprintf(code, sizeof code, "\\u%04x", (unsigned)letter.code & 0xFFFF);
            *escaped += code;
        } else {
            escaped->append(text, at, letter.length);
        }
        at += letter.length;
    }
}

// Text on a line of its own, so that each text has one form: backslashes doubled, and what would
// end the line, steer the terminal or turn the text's direction in the escapes of JSON.
static std::string EscapeLine(const std::string &text)
{
    std::string doubled, escaped;
    for (const char letter : text) {
        if (letter == '\\')
            doubled += "\\\\";
        else if (letter == '\n' || letter == '\r' || letter == '\t')
            doubled += letter == '\n' ? "\\n" : letter == '\r' ? "\\r" : "\\t";
        else
            doubled += letter;
    }
    AppendEscaped(&escaped, doubled);
    return escaped;
}

// A text of JSON. The library's objects allocate while they are destroyed, and end the program
// where that fails; its texts do not.
static std::string Quoted(const std::string &text)
{
    std::string escaped;
    AppendEscaped(&escaped, nlohmann::json(text).dump(-1, ' ', false,
                                                      nlohmann::json::error_handler_t::replace));
    return escaped;
}

// A block with a name has no identifiers; its strings are the name's, by their slot.
static std::string NamedId(const SurveyId &name, int64_t slot)
{
    return name.text + ":" + std::to_string(slot);
}

static void AppendLine(StringsRun *run, const SurveyedResource &resource, const TableText &text)
{
    const char *tag = LanguageTag(resource.language);
    char id[24];
    snprintf(id, sizeof id, "0x%08X", (unsigned)text.id);
    std::string line = id;
    if (resource.type.number == TYPE_STRING)
        line = resource.name.isText ? EscapeLine(NamedId(resource.name, text.id))
                                    : std::to_string(text.id);
    line += '\t' + (tag != nullptr ? std::string(tag) : std::to_string(resource.language));
    Append(run, line + '\t' + EscapeLine(text.text) + '\n');
}

static void AppendTextObject(StringsRun *run, const SurveyedResource &resource,
                             const TableText &text)
{
    const char *tag = LanguageTag(resource.language);
    const int isString = resource.type.number == TYPE_STRING;
    std::string object = "{\"file\":" + Quoted(*run->path);
    object += isString ? ",\"type\":\"string\"" : ",\"type\":\"message\"";
    object += ",\"id\":";
    object += isString && resource.name.isText ? Quoted(NamedId(resource.name, text.id))
                                               : std::to_string(text.id);
    object += ",\"language\":" + std::to_string(resource.language);
    object += ",\"languageTag\":" + (tag != nullptr ? Quoted(tag) : std::string("null"));
    object += ",\"text\":" + Quoted(text.text);
    Append(run, object + "}\n");
}

static void TellDamage(StringsRun *run, const SurveyedResource &resource, const char *what)
{
    const int isString = resource.type.number == TYPE_STRING;
    const SurveyId &name = resource.name;
    PrintFault(run->err, *run->path,
               std::string(isString ? "The string block " : "The message table ") +
                   (name.isText ? name.text : std::to_string(name.number)) + " (language " +
                   std::to_string(resource.language) + ") " + what);
    run->isDamaged = 1;
}

// Reads the texts of a block or a table. Returns 0 when it is damaged.
static int ReadTexts(StringsRun *run, FilePages *pages, const Survey &survey,
                     const SurveyedResource &resource, std::vector<TableText> *texts)
{
    const UINT codePage = run->options->codePage;
    std::vector<BYTE> bytes;
    if (resource.type.number == TYPE_MESSAGE_TABLE)
        return ReadSurveyedBytes(pages, &resource, &bytes) &&
               ReadMessageTable(bytes.data(), bytes.size(), codePage, texts);
    const StringFormat format = {survey.kind.format == FormatNe, codePage};
    const int64_t firstId = resource.name.isText ? 0 : FirstStringId(resource.name.number);
    bytes.resize(std::min<size_t>(resource.size, STRING_BLOCK_SIZE));
    const size_t size = ReadSurveyedStart(pages, &resource, bytes.data(), bytes.size());
    return ReadStringTable(bytes.data(), size, &format, firstId, texts);
}

// Prints the texts of the resource. Returns how many there are.
static size_t ListTexts(StringsRun *run, FilePages *pages, const Survey &survey,
                        const SurveyedResource &resource)
{
    std::vector<TableText> texts;
    if (resource.size > run->left) {
        TellDamage(run, resource,
                   "is not read: with those before it, it is more than a file may have.");
        return 0;
    }
    run->left -= resource.size;
    if (!ReadTexts(run, pages, survey, resource, &texts))
        TellDamage(run, resource, "is damaged; what could be read is printed.");
    for (const TableText &text : texts) {
        if (run->options->json)
            AppendTextObject(run, resource, text);
        else
            AppendLine(run, resource, text);
    }
    return texts.size();
}

static int IsWanted(const StringsOptions &options, const SurveyedResource &resource)
{
    return !resource.type.isText &&
           (resource.type.number == TYPE_STRING || resource.type.number == TYPE_MESSAGE_TABLE) &&
           IsLanguageWanted(resource.language, options.language);
}

static void ListSurveyed(StringsRun *run, FilePages *pages, const Survey &survey)
{
    size_t count = 0;
    run->left = KeptBytesLimit(pages->length);
    if (run->options->files.size() > 1 && !run->options->json)
        Append(run, SafeText(*run->path) + "\n");
    for (const SurveyedResource &resource : survey.resources)
        if (IsWanted(*run->options, resource) && !run->failed)
            count += ListTexts(run, pages, survey, resource);
    if (count == 0 && !run->isDamaged)
        PrintFault(run->err, *run->path,
                   run->options->language.empty() ? "It holds no strings."
                                                  : "It holds no strings of that language.");
}

static std::string FailureText()
{
    char reason[REASON_SIZE];
    DescribeFailure(reason);
    return TextToUtf8(reason);
}

static void TellRefusal(StringsRun *run, const std::string &reason)
{
    run->isDamaged = 1;
    if (run->options->json)
        Append(run, "{\"file\":" + Quoted(*run->path) + ",\"reason\":" + Quoted(reason) + "}\n");
    else
        PrintFault(run->err, *run->path, reason);
}

static void SurveyAndList(StringsRun *run, FILE *file)
{
    FilePages pages;
    Survey survey;
    OpenPages(&pages, file);
    const ProbeOutcome outcome = SurveyFile(&pages, run->options->codePage, &survey);
    if (outcome != ProbeRead && survey.resources.empty()) {
        TellRefusal(run, FailureText());
        return;
    }
    if (outcome != ProbeRead) {
        run->isDamaged = 1;
        PrintFault(run->err, *run->path,
                   "The file is damaged; what could be read is printed. " + FailureText());
    }
    ListSurveyed(run, &pages, survey);
}

// Prints the texts of one file.
static void ListFile(StringsRun *run)
{
    FILE *file = OpenForReading(run->path->c_str());
    if (file == nullptr) {
        TellRefusal(run, std::string("It cannot be opened: ") + FileErrorText() + ".");
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
    StringsRun run = {&options, nullptr, err, out, "", 0, 0, 0};
    for (const std::string &path : options.files) {
        run.path = &path;
        run.isDamaged = 0;
        ListFile(&run);
        Flush(&run);
        if (run.isDamaged)
            status = ExitFailed;
        if (run.failed) {
            if (!OutputIsClosed())
                PrintText(err, "quillmoor-cli: The texts cannot be written.\n");
            return ExitFailed;
        }
    }
    return status;
}
