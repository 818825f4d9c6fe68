// The part of the list command that prints everything that a file carries.
#pragma once

#include "cli/listing.h"
#include "exe/file_pages.h"

// Adds the resources of a survey of the file: a line for each below a line for each type, for
// people, or as JSON with the path as their file.
void AppendSurveyLines(Listing *listing, FilePages *pages, const Survey &survey);
void AppendSurveyObjects(Listing *listing, FilePages *pages, const Survey &survey,
                         const std::string &path);
