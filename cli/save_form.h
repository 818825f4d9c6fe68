// The file that a resource of a survey is saved as, whatever its kind.
#pragma once

#include "exe/picture_groups.h"
#include "export/writers.h"

#include <cstdio>

// What is read of a file for it; all must outlive it.
struct FormSource {
    FilePages *pages;
    const Survey *survey;
    const PictureIndex *pictures;
    UINT codePage; // of texts that are not UTF-16; 0: the ANSI page, or their own
};

struct SaveForm {
    const char *extension;            // ".ico"
    std::vector<BYTE> head;           // bytes that the file begins with
    bool hasData;                     // whether the resource's own bytes follow
    bool isDamaged;                   // a string table that is saved as it is
    std::vector<GroupMember> members; // pictures of a group that are in it
    size_t missing;                   // pictures that the group names and the file lacks
};

// Chooses the form of a resource that lies in the file: groups of icons and cursors, and single
// pictures of them, as .ico and .cur, bitmaps as .bmp, string tables as .txt (cli/save_text.h),
// version data as .json (cli/version_json.h), manifests as .xml and fonts as .fnt. What is none of
// them, or not what its type says, is saved byte for byte, with the extension that its beginning
// tells (content/signature.h) or .bin.
void ChooseSaveForm(const FormSource *source, const SurveyedResource *resource, SaveForm *form);

// How many bytes the file has.
uint64_t SaveFormSize(const SurveyedResource *resource, const SaveForm *form);

// Writes the file. Returns WriteDone, WriteShort, or WriteDataUnavailable when the resource's bytes
// can no longer be read.
WriteOutcome WriteSaveForm(FILE *stream, FilePages *pages, const SurveyedResource *resource,
                           const SaveForm *form);
