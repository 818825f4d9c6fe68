#include "cli/page_parts.h"
#include "cli/survey_words.h"
#include "cli/version_json.h"
#include "content/version_info.h"

#include <algorithm>

static std::string Row(const std::string &name, const std::string &language,
                       const std::string &text)
{
    return "<tr><th scope=\"row\">" + HtmlName(name) + "</th><td class=\"language\">" + language +
           "</td><td class=\"text\" dir=\"auto\">" + HtmlText(text) + "</td></tr>\n";
}

static void AppendTable(PageFile *file, const SurveyedResource &resource, const VersionInfo &info)
{
    AppendHtml(file->page, "<table class=\"version\"" + IdAttribute(file, resource) +
                               ">\n<thead><tr><th scope=\"col\">Name</th><th scope=\"col\">Language"
                               "</th><th scope=\"col\">Text</th></tr></thead>\n<tbody>\n");
    if (info.hasNumbers)
        AppendHtml(file->page, Row("File version", "", DottedVersion(info.numbers.file)) +
                                   Row("Product version", "", DottedVersion(info.numbers.product)));
    for (const VersionTable &table : info.tables)
        for (const VersionText &text : table.texts)
            if (HasRoom(file->page, text.text.size()))
                AppendHtml(file->page,
                           Row(text.name,
                               table.isKnown ? LanguageToText(table.language) : HtmlText(table.key),
                               text.text));
    AppendHtml(file->page, "</tbody>\n</table>\n");
}

bool AppendVersion(PageFile *file, const SurveyedResource &resource)
{
    VersionInfo info;
    std::vector<BYTE> bytes(std::min<size_t>(resource.size, MOST_VERSION_BYTES));
    if (!TakeBytes(file, bytes.size()))
        return false;
    const size_t size = ReadSurveyedStart(&file->pages, &resource, bytes.data(), bytes.size());
    if (!ReadVersionInfo(bytes.data(), size, 0, &info))
        return AppendData(file, resource);
    AppendTable(file, resource, info);
    return true;
}
