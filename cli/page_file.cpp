#include "cli/page_file.h"

#include "cli/reading.h"
#include "cli/survey_words.h"
#include "platform/console.h"

static std::string Heading(int level, const std::string &html)
{
    const std::string name = "h" + std::to_string(level);
    return "<" + name + ">" + html + "</" + name + ">\n";
}

static void TellFault(PageFile *file, const std::string &text)
{
    PrintFault(file->err, file->path, text);
    AppendHtml(file->page, "<p class=\"fault\">" + HtmlText(text) + "</p>\n");
    file->hasFaults = 1;
}

static std::string MachineText(WORD machine)
{
    static const struct {
        WORD machine;
        const char *name;
    } names[] = {{0x14C, "i386"}, {0x8664, "x86-64"}, {0x1C4, "ARM"}, {0xAA64, "ARM64"}};
    for (const auto &row : names)
        if (row.machine == machine)
            return row.name;
    char number[24];
    snprintf(number, sizeof number, "machine 0x%04X", (unsigned)machine);
    return number;
}

static std::string KindText(const ExecutableKind &kind)
{
    const char *what = kind.isLibrary ? "library" : "program";
    if (kind.format == FormatNe)
        return std::string("16-bit NE ") + what;
    return std::string(kind.format == FormatPe32 ? "32-bit PE " : "64-bit PE ") + what + " for " +
           MachineText(kind.machine);
}

static std::string Fact(const char *name, const std::string &html)
{
    return std::string("<dt>") + name + "</dt><dd>" + html + "</dd>\n";
}

static void AppendFacts(PageFile *file)
{
    const size_t count = file->survey.resources.size();
    AppendHtml(file->page, "<dl>\n" + Fact("Kind", KindText(file->survey.kind)) +
                               Fact("Size", std::to_string(file->pages.length) + " bytes") +
                               Fact("Resources", std::to_string(count)) + "</dl>\n");
}

static int IsSameId(const SurveyId &a, const SurveyId &b)
{
    return a.isText == b.isText && a.number == b.number && a.text == b.text;
}

static std::string OffsetText(const SurveyedResource &resource)
{
    char text[24];
    snprintf(text, sizeof text, "0x%llX", (unsigned long long)resource.fileOffset);
    return resource.isInFile ? text : "not in the file";
}

static void AppendTreeRow(PageFile *file, const SurveyedResource &resource)
{
    std::string row = "<tr><td>" + HtmlName(IdToText(resource.name)) + "</td>";
    if (file->survey.kind.format != FormatNe)
        row += "<td>" + LanguageToText(resource.language) + "</td>";
    row += "<td class=\"number\">" + std::to_string(resource.size) + "</td><td class=\"number\">" +
           OffsetText(resource) + "</td></tr>\n";
    AppendHtml(file->page, row);
}

static void AppendTree(PageFile *file)
{
    const int hasLanguages = file->survey.kind.format != FormatNe;
    const SurveyId *type = nullptr;
    AppendHtml(file->page,
               Heading(file->level, "All resources") + "<details open>\n<summary>" +
                   std::to_string(file->survey.resources.size()) +
                   " resources by type</summary>\n<table>\n<thead><tr><th scope=\"col\">Name</th>" +
                   (hasLanguages ? "<th scope=\"col\">Language</th>" : "") +
                   "<th scope=\"col\">Bytes</th><th scope=\"col\">Offset</th></tr></thead>\n");
    for (const SurveyedResource &resource : file->survey.resources) {
        if (!HasRoom(file->page, 0) || StopRequested())
            break;
        if (type == nullptr || !IsSameId(*type, resource.type)) {
            AppendHtml(file->page, std::string(type == nullptr ? "" : "</tbody>\n") +
                                       "<tbody>\n<tr><th scope=\"rowgroup\" colspan=\"" +
                                       (hasLanguages ? "4" : "3") + "\">" +
                                       HtmlName(TypeToText(resource.type)) + "</th></tr>\n");
            type = &resource.type;
        }
        AppendTreeRow(file, resource);
    }
    AppendHtml(file->page,
               std::string(type == nullptr ? "" : "</tbody>\n") + "</table>\n</details>\n");
}

void AppendFile(PageFile *file, FILE *stream)
{
    std::string reason;
    OpenPages(&file->pages, stream);
    const ReadingResult result = SurveyExecutable(&file->pages, 0, true, &file->survey, &reason);
    AppendHtml(file->page, "<section id=\"f" + std::to_string(file->number) + "\">\n");
    if (file->level > 2)
        AppendHtml(file->page, Heading(file->level - 1, HtmlName(file->path)));
    AppendFacts(file);
    if (result == ReadingEmpty)
        AppendHtml(file->page, "<p>" + HtmlText(reason) + "</p>\n");
    else if (!reason.empty())
        TellFault(file, reason);
    if (!file->survey.resources.empty())
        AppendTree(file);
    AppendHtml(file->page, "</section>\n");
}
