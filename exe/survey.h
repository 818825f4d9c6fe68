// A survey of everything that a file carries: each resource of a 32- or 64-bit PE file (Microsoft's
// PE format) or a 16-bit NE file, of whatever kind and in every language, with its place. Unlike
// the catalogue (exe/catalog.h), which keeps what the window shows, it copies no data; what is
// wanted of a resource is read from the file afterwards.
//
// How to use it:
//
//     FilePages pages;
//     Survey survey;
//     OpenPages(&pages, file);                        // exe/file_pages.h
//     if (SurveyFile(&pages, 0, &survey) == ProbeRead)
//         for (const SurveyedResource &resource : survey.resources)
//             ReadSurveyedBytes(&pages, &resource, &bytes);
//
// Memory that is not there is told by std::bad_alloc.
#pragma once

#include "exe/probe.h"
#include "exe/surveyed.h"

// Tells what a file is by its first headers. Returns ProbeRead, ProbeNotExecutable,
// ProbeNotStandard, or ProbeFailed for a PE header that is not whole or of no known format; the
// reason is noted (exe/refusal.h).
ProbeOutcome IdentifyFile(FilePages *pages, ExecutableKind *kind);

// Surveys a file of any length. A PE file's resources are where its data directory says, else in
// its section named .rsrc; NE names are in a code page (0: the ANSI page). Returns as IdentifyFile
// does; ProbeFailed also when anything does not lie in the file or a bound is met: the reason is
// noted, and what could be read is in the survey. A file that carries nothing gives ProbeRead and
// no resources.
//
// A resource that the sections place where the file stores nothing, as in programs that unpack
// themselves, is no failure: its isInFile is false. One whose place lies behind the file's end is
// listed in the same way, and fails.
//
// With a choice, other resources are left out, and of a PE file not even looked at: what is wrong
// with them does not fail the survey.
ProbeOutcome SurveyFile(FilePages *pages, UINT codePage, Survey *survey,
                        const SurveyChoice *choice = nullptr);

// Reads a resource's bytes whole. Returns false, with none, when they do not lie in the file or
// cannot be read.
bool ReadSurveyedBytes(FilePages *pages, const SurveyedResource *resource,
                       std::vector<BYTE> *bytes);

// Reads the first bytes of a resource, at most size of them. Returns how many, 0 as above.
size_t ReadSurveyedStart(FilePages *pages, const SurveyedResource *resource, void *bytes,
                         size_t size);
