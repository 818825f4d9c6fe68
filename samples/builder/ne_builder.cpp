// New Executables after Microsoft's description of the 16-bit format: the header, a resource table,
// the module's name, and the data at multiples of the alignment unit.
#include "samples/builder/builder.h"

#define NE_HEADER_LENGTH 64
#define TYPE_RECORD_LENGTH 8
#define RESOURCE_RECORD_LENGTH 12

static const char moduleName[] = "SAMPLE";

static void AddHeader(Bytes &file, size_t resourceTable, size_t afterTable, unsigned shift)
{
    size_t header = file.size();
    unsigned names = (unsigned)(afterTable - header);
    unsigned afterNames = names + 1 + (unsigned)sizeof moduleName - 1 + 2 + 1;
    AddText(file, "NE");
    AddU16(file, 0x0105);     // linker
    AddU16(file, afterNames); // entry table
    AddU16(file, 2);
    AddU32(file, 0);
    AddU16(file, 0x8000); // a library
    AddU16(file, 0);
    AddU32(file, 0); // heap, stack
    AddU32(file, 0);
    AddU32(file, 0);
    AddU16(file, 0); // segments
    AddU16(file, 0); // modules
    AddU16(file, 0); // bytes of non-resident names
    AddU16(file, NE_HEADER_LENGTH);
    AddU16(file, (unsigned)(resourceTable - header));
    AddU16(file, names);
    AddU16(file, afterNames - 1); // module references
    AddU16(file, afterNames - 1); // imported names: none but an empty one
    AddU32(file, 0);
    AddU16(file, 0);
    AddU16(file, shift);
    AddU16(file, 0);
    AddU8(file, 2); // for Windows
    AddU8(file, 0);
    AddU32(file, 0);
    AddU16(file, 0);
    AddU16(file, 0x300); // Windows 3.0
}

// Adds an id field, and the text (to `strings`) when it is one. Returns the text's place, counted
// from the start of the table.
static size_t AddId(Bytes &file, Bytes &strings, size_t stringsPlace, const ResourceId &id)
{
    if (!id.isText) {
        AddU16(file, id.number | 0x8000);
        return 0;
    }
    size_t place = stringsPlace + strings.size();
    AddU16(file, (unsigned)place);
    AddU8(strings, (unsigned)id.text.size());
    for (char16_t unit : id.text)
        AddU8(strings, unit & 0xff);
    return place;
}

static size_t TableLength(const std::vector<ResourceGroup> &types)
{
    size_t length = 2 + 2; // the alignment shift, and the type 0 at the end
    for (const ResourceGroup &type : types)
        length += TYPE_RECORD_LENGTH + type.members.size() * RESOURCE_RECORD_LENGTH;
    return length;
}

static void AddTable(BuiltExecutable &built, const ExecutableDescription &description,
                     const std::vector<ResourceGroup> &types)
{
    Bytes &file = built.bytes;
    Bytes strings;
    size_t stringsPlace = TableLength(types);
    AddU16(file, description.alignmentShift);
    for (const ResourceGroup &type : types) {
        TypePlaces places{file.size(), 0, 0};
        size_t string = AddId(file, strings, stringsPlace, type.id);
        places.string = string ? built.table + string : 0;
        AddU16(file, (unsigned)type.members.size());
        AddU32(file, 0);
        built.types.push_back(places);
        for (size_t member : type.members) {
            ResourcePlaces &resource = built.resources[member];
            resource.type = places;
            resource.entry = file.size();
            AddU32(file, 0);      // place and length come with the data
            AddU16(file, 0x1030); // movable, pure, discardable
            string = AddId(file, strings, stringsPlace, description.resources[member].name);
            resource.string = string ? built.table + string : 0;
            AddU32(file, 0);
        }
    }
    AddU16(file, 0);
    AddBytes(file, strings);
    AddU8(file, 0);
}

BuiltExecutable BuildNe(const ExecutableDescription &description)
{
    BuiltExecutable built;
    Bytes &file = built.bytes;
    std::vector<ResourceGroup> types = GroupTypes(description);
    size_t unit = (size_t)1 << description.alignmentShift;
    built.header = DOS_STUB_LENGTH;
    built.table = DOS_STUB_LENGTH + NE_HEADER_LENGTH;
    built.resources.resize(description.resources.size());

    file.resize(built.table);
    AddTable(built, description, types);
    size_t afterTable = file.size();
    AddU8(file, sizeof moduleName - 1);
    AddText(file, moduleName);
    AddU16(file, 0);
    AddU8(file, 0);  // no name here
    AddU8(file, 0);  // no modules' names
    AddU16(file, 0); // no entries

    for (const ResourceGroup &type : types)
        for (size_t member : type.members) {
            ResourcePlaces &places = built.resources[member];
            PadTo(file, unit);
            places.data = file.size();
            AddBytes(file, description.resources[member].data);
            PadTo(file, unit);
            PutU16(file, places.entry, (unsigned)(places.data / unit));
            PutU16(file, places.entry + 2, (unsigned)((file.size() - places.data) / unit));
        }

    Bytes start = MakeDosStub();
    AddHeader(start, built.table, afterTable, description.alignmentShift);
    std::copy(start.begin(), start.end(), file.begin());
    return built;
}
