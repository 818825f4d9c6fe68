#include "cli/page_parts.h"
#include "cli/survey_words.h"
#include "cli/texts.h"
#include "exe/language_tags.h"

// Text whose ends of lines are shown, and end lines.
static std::string LinesOf(const std::string &text)
{
    std::string html;
    for (size_t at = 0; at < text.size();) {
        const size_t end = text.find('\n', at);
        const size_t next = end == std::string::npos ? text.size() : end + 1;
        html += HtmlText(text.substr(at, next - at));
        if (next < text.size())
            html += '\n';
        at = next;
    }
    return html;
}

// The attribute that tells a browser the language of a text; a tag that is no tag of the web's is
// left out.
static std::string LanguageAttribute(WORD language)
{
    const char *tag = LanguageTag(language);
    return tag == nullptr ? "" : std::string(" lang=\"") + tag + "\"";
}

bool AppendTexts(PageFile *file, const SurveyedResource &resource)
{
    std::vector<TableText> texts;
    const bool isNe = file->survey.kind.format == FormatNe;
    if (!TakeBytes(file, resource.size)) {
        file->leftOut--; // which is told as a fault of its own
        file->untold.push_back(DamageText(resource, textsPastBound));
        return false;
    }
    if (!ReadTexts(&file->pages, file->survey, resource, 0, &texts))
        file->untold.push_back(DamageText(resource, "is damaged; what could be read is shown."));
    std::string id = IdAttribute(file, resource);
    for (const TableText &text : texts) {
        if (!HasRoom(file->page, text.text.size()))
            break;
        AppendHtml(
            file->page,
            "<tr" + id + "><th scope=\"row\">" + HtmlName(TextId(resource, text)) + "</th>" +
                (isNe ? ""
                      : "<td class=\"language\">" + LanguageToText(resource.language) + "</td>") +
                "<td class=\"text\" dir=\"auto\"" + LanguageAttribute(resource.language) + ">" +
                LinesOf(text.text) + "</td></tr>\n");
        id = "";
    }
    return id.empty();
}
