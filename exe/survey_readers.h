// The survey's readers, one a format (exe/survey.h). Each fills the survey's resources with what it
// finds and returns 0, with the reason noted, when anything failed.
#pragma once

#include "exe/file_pages.h"
#include "exe/surveyed.h"

int SurveyPeResources(FilePages *pages, Survey *survey);
int SurveyNeResources(FilePages *pages, UINT codePage, Survey *survey);

// The bytes that the texts of a resource's type and name take. All of a file together are bounded
// by KeptBytesLimit.
uint64_t NameBytesOf(const SurveyedResource *resource);
