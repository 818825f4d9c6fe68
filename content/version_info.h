// Version data, which tell a file's version, maker and product (Microsoft's VS_VERSIONINFO): a tree
// of blocks, each a length, the length of its value, a key, the value and the blocks in it. Those
// of 32- and 64-bit files are in UTF-16 and have a field more; those of 16-bit files are in a code
// page (VS_VERSION_INFO of Windows 3.1). Which of the two it is, the first key tells.
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <string>
#include <vector>

#define MOST_VERSION_BYTES 0x10000 // its lengths have 16 bits

// The part of fixed size (VS_FIXEDFILEINFO).
struct VersionNumbers {
    WORD file[4];    // the file's version, the most significant number first
    WORD product[4]; // its product's
    DWORD flags;     // VS_FF_DEBUG and others, those that the file tells of
    DWORD os;        // VOS_NT_WINDOWS32 and others
    DWORD type;      // VFT_DLL and others
    DWORD subtype;
};

struct VersionText {
    std::string name; // UTF-8, as the text
    std::string text;
};

// The texts of one language and code page.
struct VersionTable {
    std::string key; // "040904B0": both in hexadecimal
    bool isKnown;    // whether the key tells them
    WORD language;   // Windows' language identifier
    WORD codePage;   // 1200 for UTF-16
    std::vector<VersionText> texts;
};

struct VersionTranslation {
    WORD language;
    WORD codePage;
};

struct VersionInfo {
    bool hasNumbers;
    VersionNumbers numbers;
    std::vector<VersionTable> tables;
    std::vector<VersionTranslation> translations; // that the file is said to have
};

// Reads version data. 16-bit texts are in codePage, or when that is 0 in the one of their table
// where the system knows it. A block that runs past the one that it is in ends with it; a text ends
// at its first zero. Returns false, with nothing read, for what does not begin as version data or
// tells nothing of a version.
bool ReadVersionInfo(const BYTE *data, size_t size, UINT codePage, VersionInfo *info);
