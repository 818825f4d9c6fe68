#include "exe/refusal.h"

#include "exe/pe_headers.h"

#include <cstdio>
#include <cstring>

#define OTHER_TYPE_COUNT 12
#define OTHER_TYPE_SIZE 41

struct Failure {
    FailureKind kind;
    unsigned long long offset;
    char detail[SECTION_NAME_LENGTH + 1]; // a section's name, or the new header's two letters
};

static Failure noted;
static char otherTypes[OTHER_TYPE_COUNT][OTHER_TYPE_SIZE];
static int otherTypeCount;
static bool moreTypes; // there were more than the table holds

// The names that Windows gives to its resource types; those that are kept are not asked for.
static const struct {
    DWORD type;
    const char *name;
} typeNames[] = {
    {1, "cursor"},
    {4, "menu"},
    {5, "dialog"},
    {7, "font directory"},
    {8, "font"},
    {9, "accelerator"},
    {11, "message table"},
    {12, "cursor group"},
    {14, "icon group"},
    {16, "version"},
    {17, "dialog include"},
    {19, "plug and play"},
    {20, "VxD"},
    {21, "animated cursor"},
    {22, "animated icon"},
    {23, "HTML"},
    {24, "manifest"},
};

// A reason is told as before, the offset or bound and after; without after there is no number in
// it.
static const struct {
    FailureKind kind;
    const char *before;
    const char *after;
} reasons[] = {
    {FailureNotExecutable, "It is not an executable: it does not begin with the letters MZ",
     nullptr},
    {FailureNewHeader, "The header at offset ", " is neither NE nor PE"},
    {FailureTooLarge, "It is a file of 4 GiB or more", nullptr},
    {FailureMemory, "There is not enough memory", nullptr},
    {FailureUnreadable, "It could not be read to its end", nullptr},
    {FailureHeaders, "At offset ", " there are no whole PE headers"},
    {Failure64Bit, "It is a 64-bit image; only 32-bit PE and 16-bit NE files are read", nullptr},
    {FailureNoSection, "It has no section named .rsrc", nullptr},
    {FailureRootAddress, "The address of its resources, ", ", lies in no section"},
    {FailureDirectory, "The resource directory at offset ", " does not lie in the file"},
    {FailureDirectoryEntry, "The directory entry at offset ", " does not lie in the file"},
    {FailureName, "The resource name at offset ", " does not lie in the file"},
    {FailureDataEntry, "The data entry at offset ", " does not lie in the file"},
    {FailureData, "The resource data at offset ", " do not lie in the file"},
    {FailureDataAddress, "The address in the data entry at offset ", " lies in no section"},
    {FailureTable, "At offset ", " the resource table is cut short"},
    {FailureDepth, "The resource directory at offset ", " lies more than 8 levels below the first"},
    {FailureDirectoryCount, "The resource directories are named over and over; no more than ",
     " are followed in a file of this size"},
    {FailureEntryCount,
     "The entries of the resource directories are named over and over; no more than ",
     " are followed in a file of this size"},
    {FailureKeptBytes, "The resources together are longer than the ",
     " bytes that are kept of a file of this size"},
    {FailureNames,
     "The names of the resources together are longer than what is kept of a file of this size",
     nullptr},
};

void ClearFailure()
{
    noted = {};
    otherTypeCount = 0;
    moreTypes = false;
}

void NoteFailure(FailureKind kind, unsigned long long offset)
{
    if (noted.kind != FailureNone)
        return;
    noted.kind = kind;
    noted.offset = offset;
}

FailureKind NotedFailure()
{
    return noted.kind;
}

static void NoteDetail(const BYTE *letters, size_t length)
{
    size_t i = 0;
    for (; i < length && letters[i] != 0; i++)
        noted.detail[i] = letters[i] >= 32 && letters[i] < 127 ? (char)letters[i] : '?';
    noted.detail[i] = 0;
}

void NoteNewHeader(const BYTE signature[2], unsigned long long offset)
{
    if (noted.kind != FailureNone)
        return;
    NoteFailure(FailureNewHeader, offset);
    if (signature[0] > 32 && signature[0] < 127 && signature[1] > 32 && signature[1] < 127)
        NoteDetail(signature, 2);
}

void NoteMissingSection(const BYTE *other)
{
    if (noted.kind != FailureNone)
        return;
    NoteFailure(FailureNoSection);
    if (other != nullptr)
        NoteDetail(other, SECTION_NAME_LENGTH);
}

void NoteOtherTypeName(const char *name)
{
    char entry[OTHER_TYPE_SIZE];
    snprintf(entry, sizeof entry, "%s", name);
    for (int i = 0; i < otherTypeCount; i++)
        if (strcmp(otherTypes[i], entry) == 0)
            return;
    if (otherTypeCount == OTHER_TYPE_COUNT)
        moreTypes = true;
    else
        memcpy(otherTypes[otherTypeCount++], entry, sizeof entry);
}

void NoteOtherType(DWORD type)
{
    char number[OTHER_TYPE_SIZE];
    for (const auto &row : typeNames) {
        if (row.type == type) {
            NoteOtherTypeName(row.name);
            return;
        }
    }
    snprintf(number, sizeof number, "type %lu", (unsigned long)type);
    NoteOtherTypeName(number);
}

static void DescribeOtherTypes(char *text)
{
    if (otherTypeCount == 0) {
        strcpy(text, "It holds no resources.");
        return;
    }
    int length =
        snprintf(text, REASON_SIZE, "It holds only resources of kinds that are not kept: ");
    for (int i = 0; i < otherTypeCount; i++)
        length += snprintf(text + length, REASON_SIZE - (size_t)length, "%s%s", i == 0 ? "" : ", ",
                           otherTypes[i]);
    snprintf(text + length, REASON_SIZE - (size_t)length, moreTypes ? " and others." : ".");
}

void DescribeFailure(char *text)
{
    for (const auto &row : reasons) {
        if (row.kind != noted.kind)
            continue;
        int length = snprintf(text, REASON_SIZE, "%s", row.before);
        if (row.after != nullptr)
            length += snprintf(text + length, REASON_SIZE - (size_t)length, "%llu%s", noted.offset,
                               row.after);
        if (noted.detail[0] != 0)
            length +=
                snprintf(text + length, REASON_SIZE - (size_t)length,
                         noted.kind == FailureNewHeader ? " but %s"
                                                        : "; its resources are in the section %s",
                         noted.detail);
        snprintf(text + length, REASON_SIZE - (size_t)length, ".");
        return;
    }
    DescribeOtherTypes(text);
}
