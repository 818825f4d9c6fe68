// Portable Executables after Microsoft's PE format: a resource section of directories (types,
// names, languages), the records of the data, the names' texts and the data, in this order.
#include "samples/builder/builder.h"

#include <algorithm>

#define FILE_UNIT 0x200
#define MEMORY_UNIT 0x1000
#define DIRECTORY_LENGTH 16
#define ENTRY_LENGTH 8
#define DATA_ENTRY_LENGTH 16
#define HIGH_BIT 0x80000000u

struct NameNode {
    ResourceId id;
    std::vector<ResourceGroup> languages;
    size_t directory; // bytes from the section's start, like every place here
};

struct TypeNode {
    ResourceId id;
    std::vector<NameNode> names;
    size_t directory;
};

struct SectionPlan {
    std::vector<TypeNode> types;
    size_t dataEntries;
    size_t strings;
};

static SectionPlan PlanSection(const ExecutableDescription &description)
{
    SectionPlan plan;
    size_t dataCount = 0;
    for (const ResourceGroup &type : GroupTypes(description)) {
        TypeNode node{type.id, {}, 0};
        for (const ResourceGroup &name : GroupResources(
                 description, type.members, [](const ResourceDescription &of) { return of.name; }))
            node.names.push_back({name.id,
                                  GroupResources(description, name.members,
                                                 [](const ResourceDescription &of) {
                                                     return ResourceId((int)of.language);
                                                 }),
                                  0});
        plan.types.push_back(node);
    }
    size_t place = DIRECTORY_LENGTH + plan.types.size() * ENTRY_LENGTH;
    for (TypeNode &type : plan.types) {
        type.directory = place;
        place += DIRECTORY_LENGTH + type.names.size() * ENTRY_LENGTH;
    }
    for (TypeNode &type : plan.types)
        for (NameNode &name : type.names) {
            name.directory = place;
            place += DIRECTORY_LENGTH + name.languages.size() * ENTRY_LENGTH;
            dataCount += name.languages.size();
        }
    plan.dataEntries = place;
    plan.strings = place + dataCount * DATA_ENTRY_LENGTH;
    return plan;
}

template <class Node> static void AddDirectory(Bytes &section, const std::vector<Node> &nodes)
{
    auto texts =
        std::count_if(nodes.begin(), nodes.end(), [](const Node &node) { return node.id.isText; });
    AddU32(section, 0);
    AddU32(section, 0);
    AddU32(section, 0);
    AddU16(section, (unsigned)texts);
    AddU16(section, (unsigned)nodes.size() - (unsigned)texts);
}

// Adds an entry's name field, and the text (to `strings`) when it is one. Returns the text's place.
static size_t AddEntryName(Bytes &section, const SectionPlan &plan, Bytes &strings,
                           const ResourceId &id)
{
    if (!id.isText) {
        AddU32(section, id.number);
        return 0;
    }
    size_t place = plan.strings + strings.size();
    AddU32(section, (uint32_t)place | HIGH_BIT);
    AddU16(strings, (unsigned)id.text.size());
    for (char16_t unit : id.text)
        AddU16(strings, unit);
    return place;
}

static void AddLanguages(Bytes &section, const NameNode &name, size_t &dataEntry,
                         BuiltExecutable &built)
{
    AddDirectory(section, name.languages);
    for (const ResourceGroup &language : name.languages) {
        for (size_t member : language.members) {
            built.resources[member].directory = name.directory;
            built.resources[member].languageEntry = section.size();
            built.resources[member].dataEntry = dataEntry;
        }
        AddU32(section, language.id.number);
        AddU32(section, (uint32_t)dataEntry);
        dataEntry += DATA_ENTRY_LENGTH;
    }
}

static Bytes AddDirectories(Bytes &section, const SectionPlan &plan, BuiltExecutable &built)
{
    Bytes strings;
    AddDirectory(section, plan.types);
    for (const TypeNode &type : plan.types) {
        TypePlaces places{section.size(), type.directory, 0};
        places.string = AddEntryName(section, plan, strings, type.id);
        AddU32(section, (uint32_t)type.directory | HIGH_BIT);
        built.types.push_back(places);
    }
    for (size_t i = 0; i < plan.types.size(); i++) {
        AddDirectory(section, plan.types[i].names);
        for (const NameNode &name : plan.types[i].names) {
            size_t entry = section.size();
            size_t string = AddEntryName(section, plan, strings, name.id);
            AddU32(section, (uint32_t)name.directory | HIGH_BIT);
            for (const ResourceGroup &language : name.languages)
                for (size_t member : language.members) {
                    built.resources[member].type = built.types[i];
                    built.resources[member].entry = entry;
                    built.resources[member].string = string;
                }
        }
    }
    size_t dataEntry = plan.dataEntries;
    for (const TypeNode &type : plan.types)
        for (const NameNode &name : type.names)
            AddLanguages(section, name, dataEntry, built);
    return strings;
}

// Makes the section's bytes; places are counted from the section's start.
static Bytes MakeResourceSection(const ExecutableDescription &description, BuiltExecutable &built)
{
    SectionPlan plan = PlanSection(description);
    built.resources.resize(description.resources.size());
    Bytes section;
    Bytes strings = AddDirectories(section, plan, built);
    section.resize(plan.strings);
    AddBytes(section, strings);
    for (size_t i = 0; i < description.resources.size(); i++) {
        const Bytes &data = description.resources[i].data;
        PadTo(section, 8);
        built.resources[i].data = section.size();
        PutU32(section, built.resources[i].dataEntry, built.address + (uint32_t)section.size());
        PutU32(section, built.resources[i].dataEntry + 4, (uint32_t)data.size());
        AddBytes(section, data);
    }
    return section;
}

static void MovePlaces(BuiltExecutable &built, const ExecutableDescription &description)
{
    auto moveType = [&](TypePlaces &type) {
        type.entry += built.table;
        type.directory += built.table;
        type.string += type.string ? built.table : 0;
    };
    for (TypePlaces &type : built.types)
        moveType(type);
    for (size_t i = 0; i < description.resources.size(); i++) {
        ResourcePlaces &places = built.resources[i];
        moveType(places.type);
        for (size_t *place : {&places.entry, &places.data, &places.directory, &places.languageEntry,
                              &places.dataEntry})
            *place += built.table;
        places.string += places.string ? built.table : 0;
    }
}

static uint32_t RoundUp(size_t size, uint32_t unit)
{
    return ((uint32_t)size + unit - 1) & ~(unit - 1);
}

static void AddHeaders(Bytes &file, const ExecutableDescription &description, size_t sectionCount,
                       uint32_t headerSize, uint32_t resourceAddress, size_t resourceSize)
{
    bool wide = description.is64;
    auto addPointer = [&](uint64_t value) {
        wide ? AddU64(file, value) : AddU32(file, (uint32_t)value);
    };
    AddText(file, std::string_view("PE\0\0", 4));
    AddU16(file, wide ? 0x8664 : 0x14c);
    AddU16(file, (unsigned)sectionCount);
    AddU32(file, 0);
    AddU32(file, 0);
    AddU32(file, 0);
    AddU16(file, wide ? 240 : 224);
    AddU16(file, wide ? 0x2022 : 0x2102); // a library; of 32 bits, or of wide addresses
    AddU16(file, wide ? 0x20b : 0x10b);
    AddU16(file, 0);
    AddU32(file, 0);
    AddU32(file, RoundUp(resourceSize, FILE_UNIT));
    AddU32(file, 0);
    AddU32(file, 0); // no entry point
    AddU32(file, MEMORY_UNIT);
    if (!wide)
        AddU32(file, MEMORY_UNIT);
    addPointer(description.imageBase);
    AddU32(file, MEMORY_UNIT);
    AddU32(file, FILE_UNIT);
    for (unsigned version : {4, 0, 0, 0, 4, 0, 0, 0})
        AddU16(file, version); // system, image and subsystem, then a reserved word pair
    AddU32(file, resourceAddress + RoundUp(resourceSize, MEMORY_UNIT));
    AddU32(file, headerSize);
    AddU32(file, 0);
    AddU16(file, 2);     // graphical subsystem
    AddU16(file, 0x100); // no execution of data
    for (uint64_t size : {0x100000, 0x1000, 0x100000, 0x1000})
        addPointer(size); // stack and heap
    AddU32(file, 0);
    AddU32(file, 16);
    for (uint32_t i = 0; i < 16; i++) {
        AddU32(file, i == 2 ? resourceAddress : 0);
        AddU32(file, i == 2 ? (uint32_t)resourceSize : 0);
    }
}

static void AddSectionHeader(Bytes &file, const SectionDescription &section, uint32_t address,
                             uint32_t place)
{
    std::string name = section.name;
    name.resize(8);
    AddText(file, name);
    AddU32(file, (uint32_t)section.data.size());
    AddU32(file, address);
    AddU32(file, RoundUp(section.data.size(), FILE_UNIT));
    AddU32(file, place);
    AddU32(file, 0);
    AddU32(file, 0);
    AddU32(file, 0);
    AddU32(file, 0x40000040); // initialised data, readable
}

BuiltExecutable BuildPe(const ExecutableDescription &description)
{
    BuiltExecutable built;
    size_t sectionCount = description.sectionsBefore.size() + 1;
    size_t tableAt = DOS_STUB_LENGTH + (description.is64 ? 264 : 248);
    uint32_t headerSize = RoundUp(tableAt + sectionCount * 40, FILE_UNIT);
    uint32_t place = headerSize;
    uint32_t address = RoundUp(headerSize, MEMORY_UNIT);
    std::vector<SectionDescription> sections = description.sectionsBefore;
    for (const SectionDescription &section : sections) {
        place += RoundUp(section.data.size(), FILE_UNIT);
        address += RoundUp(std::max<size_t>(section.data.size(), 1), MEMORY_UNIT);
    }
    built.address = address;
    built.table = place;
    built.header = DOS_STUB_LENGTH;
    built.sectionHeader = tableAt + (sectionCount - 1) * 40;
    sections.push_back({description.sectionName, MakeResourceSection(description, built)});
    MovePlaces(built, description);

    Bytes &file = built.bytes;
    file = MakeDosStub();
    AddHeaders(file, description, sectionCount, headerSize, address, sections.back().data.size());
    place = headerSize;
    address = RoundUp(headerSize, MEMORY_UNIT);
    for (const SectionDescription &section : sections) {
        AddSectionHeader(file, section, address, place);
        place += RoundUp(section.data.size(), FILE_UNIT);
        address += RoundUp(std::max<size_t>(section.data.size(), 1), MEMORY_UNIT);
    }
    for (const SectionDescription &section : sections) {
        PadTo(file, FILE_UNIT);
        AddBytes(file, section.data);
    }
    PadTo(file, FILE_UNIT);
    return built;
}
