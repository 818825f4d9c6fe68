// Version data as JSON text, for files that scripts and people read.
#pragma once

#include "content/version_info.h"

// Writes version data as an object on several lines: `fixed` (the numbers of the versions as texts,
// flags, system and type as numbers and by their names; null when the data have none), `strings`
// (a table for each language and code page, with its texts by their names: of two with the same
// name the first, which is the one that Windows gives) and `translations`.
std::string MakeVersionJson(const VersionInfo *info);

// A version's numbers with dots between them.
std::string DottedVersion(const WORD version[4]);
