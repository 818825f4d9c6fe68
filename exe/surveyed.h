// What a survey gives (exe/survey.h): what a file is, and each resource that it carries.
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <string>
#include <vector>

enum ExecutableFormat {
    FormatPe32,     // 32-bit PE
    FormatPe32Plus, // 64-bit PE
    FormatNe,       // 16-bit NE
};

// What a file is by its headers.
struct ExecutableKind {
    ExecutableFormat format;
    WORD machine;       // PE: the header's number, 0x14C i386, 0x8664 x86_64, 0xAA64 ARM64; NE: 0
    bool isLibrary;     // a DLL
    DWORD headerOffset; // of the PE or NE header, in the file
};

// A resource's type or name: a number, or a text (which may be empty).
struct SurveyId {
    bool isText;
    DWORD number;     // 0 for a text
    std::string text; // UTF-8; empty for a number
};

struct SurveyedResource {
    SurveyId type;
    SurveyId name;
    WORD language;       // PE: Windows' language identifier, 0 neutral; NE: 0
    DWORD codePage;      // PE: what the data entry tells, mostly 0; NE: 0
    WORD flags;          // NE: of the resource record (exe/ne_table.h); PE: 0
    bool isInFile;       // whether its bytes lie in the file
    uint64_t fileOffset; // where they begin; 0 when they do not lie in the file
    DWORD size;          // bytes; NE: a multiple of the alignment unit
};

// What of a file is wanted.
struct SurveyChoice {
    DWORD type;               // the type's number
    std::vector<DWORD> names; // numbers, ascending; none: every name
};

struct Survey {
    ExecutableKind kind;
    std::vector<SurveyedResource> resources; // in the order of the file
};
