// What a survey tells of a resource, in words for people.
#pragma once

#include "exe/surveyed.h"

// A type or name: a number as it is, a text in quotation marks with what steers text replaced
// (platform/console.h).
std::string IdToText(const SurveyId &id);

// A type by its standard name, else as above.
std::string TypeToText(const SurveyId &type);

// A language's tag, else Windows' number for it; "neutral" for 0.
std::string LanguageToText(WORD language);
