#include "cli/page_file.h"

#include "cli/page_parts.h"
#include "cli/reading.h"
#include "cli/survey_words.h"
#include "exe/catalog.h"
#include "exe/refusal.h"
#include "platform/console.h"
#include "platform/picture_limit.h"

#include <algorithm>

#define TEXTS_OPENING(language)                                                                    \
    "<table>\n<thead><tr><th scope=\"col\">Identifier</th>" language                               \
    "<th scope=\"col\">Text</th></tr></thead>\n<tbody>\n"

static const char treeTitle[] = "All resources";

static std::string PartAnchor(const PageFile *file, PagePartId part)
{
    return "f" + std::to_string(file->number) + "p" + std::to_string(part);
}

#define LONG_PART 20 // resources from which on the reader can fold it

// Begins a part of so many resources, and ends it.
static void BeginPart(PageFile *file, PagePartId part, const char *title, size_t count)
{
    const std::string heading = "h" + std::to_string(file->level);
    AppendHtml(file->page, "<" + heading + " id=\"" + PartAnchor(file, part) + "\">" + title +
                               "</" + heading + ">\n");
    if (count >= LONG_PART)
        AppendHtml(file->page,
                   "<details open>\n<summary>" + std::to_string(count) + " resources</summary>\n");
}

static void EndPart(PageFile *file, size_t count)
{
    if (count >= LONG_PART)
        AppendHtml(file->page, "</details>\n");
}

static void TellFault(PageFile *file, const std::string &text)
{
    ClearProgress(file->progress);
    PrintFault(file->err, file->path, text);
    if (HasRoom(file->page, text.size()))
        AppendHtml(file->page, "<p class=\"fault\">" + HtmlText(text) + "</p>\n");
    file->hasFaults = true;
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

// The parts, in their order on the page.
static const struct {
    PagePartId id;
    const char *title;
    const char *opening;
    const char *openingNe; // without languages
    const char *closing;
    bool (*append)(PageFile *file, const SurveyedResource &resource);
} parts[] = {
    {PartVersion, "Version", "<div>\n", nullptr, "</div>\n", AppendVersion},
    {PartPictures, "Pictures", "<div class=\"pictures\">\n", nullptr, "</div>\n", AppendPicture},
    {PartSounds, "Sounds", "<div class=\"sounds\">\n", nullptr, "</div>\n", AppendSound},
    {PartStrings, "Strings", TEXTS_OPENING("<th scope=\"col\">Language</th>"), TEXTS_OPENING(""),
     "</tbody>\n</table>\n", AppendTexts},
    {PartMessages, "Messages", TEXTS_OPENING("<th scope=\"col\">Language</th>"), TEXTS_OPENING(""),
     "</tbody>\n</table>\n", AppendTexts},
    {PartData, "Other data", "<div>\n", nullptr, "</div>\n", AppendData},
};

static void TellUntold(PageFile *file)
{
    for (const std::string &text : file->untold)
        TellFault(file, text);
    file->untold.clear();
}

static size_t CountOf(const PageFile *file, PagePartId part)
{
    return (size_t)std::count(file->parts.begin(), file->parts.end(), (BYTE)part);
}

// What the file is, and how much of each kind there is.
static void AppendFacts(PageFile *file)
{
    const size_t count = file->survey.resources.size();
    AppendHtml(file->page, "<dl>\n" + Fact("Kind", KindText(file->survey.kind)) +
                               Fact("Size", std::to_string(file->pages.length) + " bytes"));
    for (const auto &part : parts)
        if (CountOf(file, part.id) > 0)
            AppendHtml(file->page, "<dt><a href=\"#" + PartAnchor(file, part.id) + "\">" +
                                       part.title + "</a></dt><dd>" +
                                       std::to_string(CountOf(file, part.id)) + "</dd>\n");
    if (count > 0)
        AppendHtml(file->page, "<dt><a href=\"#" + PartAnchor(file, PartNone) + "\">" + treeTitle +
                                   "</a></dt><dd>" + std::to_string(count) + "</dd>\n");
    AppendHtml(file->page, "</dl>\n");
}

static void AppendParts(PageFile *file)
{
    const std::vector<SurveyedResource> &resources = file->survey.resources;
    const bool isNe = file->survey.kind.format == FormatNe;
    size_t done = 0;
    for (const auto &part : parts) {
        const size_t count = CountOf(file, part.id);
        if (count == 0 || file->page->isFull)
            continue;
        BeginPart(file, part.id, part.title, count);
        AppendHtml(file->page, isNe && part.openingNe != nullptr ? part.openingNe : part.opening);
        for (size_t i = 0; i < resources.size(); i++) {
            if (!HasRoom(file->page, 0) || file->page->failed || StopRequested())
                break;
            if (file->parts[i] != part.id)
                continue;
            file->isShown[i] = (BYTE)part.append(file, resources[i]);
            done++;
            if (file->level == 2)
                ShowProgress(file->progress, done, resources.size(), "resources");
        }
        AppendHtml(file->page, part.closing);
        EndPart(file, count);
        TellUntold(file);
    }
    if (file->undrawn > 0)
        TellFault(file, "Pictures that cannot be drawn: " + std::to_string(file->undrawn) + ".");
    if (file->leftOut > 0)
        TellFault(file, "Resources that are left out, because with those before them they are more "
                        "than a file may have: " +
                            std::to_string(file->leftOut) + ".");
}

// Sorts the resources into the parts.
static void SortResources(PageFile *file)
{
    const uint64_t length = file->pages.length;
    for (const SurveyedResource &resource : file->survey.resources)
        file->parts.push_back((BYTE)PartOf(&file->pages, resource));
    file->isShown.resize(file->parts.size());
    file->bytesLeft = KeptBytesLimit(length);
    // A bitmap of one bit a pixel has eight times as many as bytes.
    file->pixelsLeft = std::max<uint64_t>(mostPicturePixels, 8 * length);
    ReadPictureGroups(&file->pages, &file->survey, &file->groups);
}

static bool IsSameId(const SurveyId &a, const SurveyId &b)
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
    const size_t index = (size_t)(&resource - file->survey.resources.data());
    std::string row = "<tr><td>";
    if (file->isShown[index])
        row += "<a href=\"#f" + std::to_string(file->number) + "r" + std::to_string(index) + "\">" +
               HtmlName(IdToText(resource.name)) + "</a></td>";
    else
        row += HtmlName(IdToText(resource.name)) + "</td>";
    if (file->survey.kind.format != FormatNe)
        row += "<td class=\"language\">" + LanguageToText(resource.language) + "</td>";
    row += "<td class=\"number\">" + std::to_string(resource.size) + "</td><td class=\"number\">" +
           OffsetText(resource) + "</td></tr>\n";
    AppendHtml(file->page, row);
}

static void AppendTree(PageFile *file)
{
    const bool hasLanguages = file->survey.kind.format != FormatNe;
    const SurveyId *type = nullptr;
    BeginPart(file, PartNone, treeTitle, file->survey.resources.size());
    AppendHtml(file->page,
               std::string("<table>\n<thead><tr><th scope=\"col\">Name</th>") +
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
    AppendHtml(file->page, std::string(type == nullptr ? "" : "</tbody>\n") + "</table>\n");
    EndPart(file, file->survey.resources.size());
}

void AppendFile(PageFile *file, FILE *stream)
{
    std::string reason;
    OpenPages(&file->pages, stream);
    const ReadingResult result = SurveyExecutable(&file->pages, 0, true, &file->survey, &reason);
    SortResources(file);
    AppendHtml(file->page, "<section id=\"f" + std::to_string(file->number) + "\">\n");
    if (file->level > 2)
        AppendHtml(file->page, "<h2>" + HtmlName(file->path) + "</h2>\n");
    AppendFacts(file);
    if (result == ReadingEmpty)
        AppendHtml(file->page, "<p>" + HtmlText(reason) + "</p>\n");
    else if (!reason.empty())
        TellFault(file, reason);
    AppendParts(file);
    if (!file->survey.resources.empty())
        AppendTree(file);
    file->isUnreadable = NotedFailure() == FailureUnreadable;
    if (file->isUnreadable && reason.empty())
        TellFault(file, FailureText());
    AppendHtml(file->page, "</section>\n");
}
