#include "cli/survey_words.h"

#include "exe/language_tags.h"
#include "exe/type_names.h"
#include "platform/console.h"

std::string IdToText(const SurveyId &id)
{
    return id.isText ? '"' + SafeText(id.text) + '"' : std::to_string(id.number);
}

std::string TypeToText(const SurveyId &type)
{
    const char *name = type.isText ? nullptr : StandardTypeName(type.number);
    return name == nullptr ? IdToText(type) : name;
}

std::string LanguageToText(WORD language)
{
    const char *tag = LanguageTag(language);
    return language == 0 ? "neutral" : tag != nullptr ? tag : std::to_string(language);
}
