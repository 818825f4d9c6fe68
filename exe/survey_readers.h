// The survey's readers, one a format (exe/survey.h). Each fills the survey's resources with what it
// finds, of a choice when that is not NULL, and returns false, with the reason noted, when anything
// failed.
#pragma once

#include "exe/file_pages.h"
#include "exe/surveyed.h"

bool SurveyPeResources(FilePages *pages, const SurveyChoice *choice, Survey *survey);
bool SurveyNeResources(FilePages *pages, UINT codePage, const SurveyChoice *choice, Survey *survey);

// Whether a choice, which may be NULL, has resources of a type; and of a name, given that it has
// the type. isText: a type or name that is no number.
bool ChoosesType(const SurveyChoice *choice, bool isText, DWORD number);
bool ChoosesName(const SurveyChoice *choice, bool isText, DWORD number);

// The bytes that the texts of a resource's type and name take. All of a file together are bounded
// by KeptBytesLimit.
uint64_t NameBytesOf(const SurveyedResource *resource);
