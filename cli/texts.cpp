#include "cli/texts.h"

#include "content/message_table.h"
#include "exe/type_names.h"

#include <algorithm>

const char textsPastBound[] = "is not read: with those before it, it is more than a file may have.";

bool HoldsStrings(const SurveyedResource &resource)
{
    return !resource.type.isText && resource.type.number == TYPE_STRING;
}

bool HoldsMessages(const SurveyedResource &resource)
{
    return !resource.type.isText && resource.type.number == TYPE_MESSAGE_TABLE;
}

bool ReadTexts(FilePages *pages, const Survey &survey, const SurveyedResource &resource,
               UINT codePage, std::vector<TableText> *texts)
{
    std::vector<BYTE> bytes;
    if (HoldsMessages(resource))
        return ReadSurveyedBytes(pages, &resource, &bytes) &&
               ReadMessageTable(bytes.data(), bytes.size(), codePage, texts);
    const StringFormat format = {survey.kind.format == FormatNe, codePage};
    const int64_t firstId = resource.name.isText ? 0 : FirstStringId(resource.name.number);
    bytes.resize(std::min<size_t>(resource.size, STRING_BLOCK_SIZE));
    const size_t size = ReadSurveyedStart(pages, &resource, bytes.data(), bytes.size());
    return ReadStringTable(bytes.data(), size, &format, firstId, texts);
}

std::string DamageText(const SurveyedResource &resource, const char *what)
{
    const SurveyId &name = resource.name;
    return std::string(HoldsStrings(resource) ? "The string block " : "The message table ") +
           (name.isText ? name.text : std::to_string(name.number)) + " (language " +
           std::to_string(resource.language) + ") " + what;
}

std::string TextId(const SurveyedResource &resource, const TableText &text)
{
    if (HoldsStrings(resource))
        return (resource.name.isText ? resource.name.text + ":" : "") + std::to_string(text.id);
    char id[24];
    snprintf(id, sizeof id, "0x%08X", (unsigned)text.id);
    return id;
}
