// Makes Windows executables in memory from a description: 32- and 64-bit Portable Executables and
// 16-bit New Executables that hold resources and no code. The result tells where every structure
// lies, so that a damaged file is made by overwriting the numbers of a good one.
#pragma once

#include "samples/builder/bytes.h"
#include "samples/builder/pictures.h"
#include "samples/builder/sounds.h"
#include "samples/builder/texts.h"

#include <string>

// A resource's type or name: a number, or a text (which may be empty).
struct ResourceId {
    bool isText = false;
    unsigned number = 0;
    std::u16string text;

    ResourceId(int id) : number((unsigned)id)
    {
    }
    ResourceId(const char *name); // each char becomes one code unit of the same value
    ResourceId(std::u16string name) : isText(true), text(name)
    {
    }
    ResourceId(const char16_t *name) : isText(true), text(name)
    {
    }
};

struct ResourceDescription {
    ResourceId type;
    ResourceId name;
    Bytes data;
    unsigned language = 0x409; // PE only
};

struct SectionDescription {
    std::string name; // at most 8 characters
    Bytes data;
};

struct ExecutableDescription {
    std::vector<ResourceDescription> resources = {};
    // Types that are listed with no resource below them.
    std::vector<ResourceId> emptyTypes = {};
    // Types, names and languages stay in the order of their first mention (texts still go before
    // numbers); otherwise they are sorted, as loaders want them.
    bool keepOrder = false;

    // PE only
    bool is64 = false;                 // PE32+ for x86_64 instead of PE32 for i386
    std::string sectionName = ".rsrc"; // of the resources
    std::vector<SectionDescription> sectionsBefore = {}; // stand before the resources' section
    uint64_t imageBase = 0x10000000;

    // NE only; data offsets and lengths are 16-bit counts of 1 << alignmentShift bytes
    unsigned alignmentShift = 4;
};

// Where the pieces of one type lie: file offsets in bytes.
struct TypePlaces {
    size_t entry = 0;     // PE: its entry in the root directory; NE: its type record
    size_t directory = 0; // PE: the directory of its names
    size_t string = 0;    // its name, when that is a text
};

// Where the pieces of one resource lie: file offsets in bytes.
struct ResourcePlaces {
    TypePlaces type;
    size_t entry = 0;         // PE: its entry in the type's directory; NE: its resource record
    size_t string = 0;        // its name, when that is a text
    size_t data = 0;          // the first byte of the data itself
    size_t directory = 0;     // PE: the directory of its languages
    size_t languageEntry = 0; // PE: its entry there
    size_t dataEntry = 0;     // PE: the record of the data's address and size
};

struct BuiltExecutable {
    Bytes bytes;
    size_t header = 0;        // the "PE" or "NE" header
    size_t sectionHeader = 0; // PE: the section header of the resources
    size_t table = 0;         // PE: the start of the resources' section; NE: the resource table
    uint32_t address = 0;     // PE: the section's relative virtual address
    std::vector<TypePlaces> types;         // in the order of the file
    std::vector<ResourcePlaces> resources; // in the order of the description
};

BuiltExecutable BuildPe(const ExecutableDescription &description);

// Texts are written with the low byte of each code unit, at most 255 of them.
BuiltExecutable BuildNe(const ExecutableDescription &description);

// What stands below one directory: the members, each with the description's resources that share
// it.
struct ResourceGroup {
    ResourceId id;
    std::vector<size_t> members; // indexes into the description's resources
};

// Groups the resources of one directory by key(resource), in the order of a file.
std::vector<ResourceGroup> GroupResources(const ExecutableDescription &description,
                                          const std::vector<size_t> &members,
                                          ResourceId (*key)(const ResourceDescription &));

// The types of a description, in the order of a file, those without a resource included.
std::vector<ResourceGroup> GroupTypes(const ExecutableDescription &description);

// The 128 bytes that an executable begins with: the MZ header and a program for DOS that says what
// it can't do. The new header follows at once.
#define DOS_STUB_LENGTH 128
Bytes MakeDosStub();
