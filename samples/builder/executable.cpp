#include "samples/builder/builder.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <tuple>

ResourceId::ResourceId(const char *name) : isText(true)
{
    for (; *name; name++)
        text.push_back((unsigned char)*name);
}

static auto OrderOf(const ResourceId &id)
{
    // texts stand before numbers
    return std::make_tuple(!id.isText, id.number, id.text);
}

static void SortGroups(std::vector<ResourceGroup> &groups, bool keepOrder)
{
    if (keepOrder)
        std::stable_partition(groups.begin(), groups.end(),
                              [](const ResourceGroup &group) { return group.id.isText; });
    else
        std::stable_sort(groups.begin(), groups.end(),
                         [](const ResourceGroup &a, const ResourceGroup &b) {
                             return OrderOf(a.id) < OrderOf(b.id);
                         });
}

std::vector<ResourceGroup> GroupResources(const ExecutableDescription &description,
                                          const std::vector<size_t> &members,
                                          ResourceId (*key)(const ResourceDescription &))
{
    std::vector<ResourceGroup> groups;
    std::map<decltype(OrderOf(ResourceId(0))), size_t> known;
    for (size_t member : members) {
        ResourceId id = key(description.resources[member]);
        auto found = known.emplace(OrderOf(id), groups.size());
        if (found.second)
            groups.push_back({id, {}});
        groups[found.first->second].members.push_back(member);
    }
    SortGroups(groups, description.keepOrder);
    return groups;
}

std::vector<ResourceGroup> GroupTypes(const ExecutableDescription &description)
{
    std::vector<size_t> all(description.resources.size());
    std::iota(all.begin(), all.end(), (size_t)0);
    std::vector<ResourceGroup> groups =
        GroupResources(description, all, [](const ResourceDescription &of) { return of.type; });
    for (const ResourceId &type : description.emptyTypes)
        groups.push_back({type, {}});
    SortGroups(groups, description.keepOrder);
    return groups;
}

Bytes MakeDosStub()
{
    Bytes stub;
    AddText(stub, "MZ");
    for (unsigned value : {0x80, 1, 0, 4, 0, 0xffff, 0, 0xb8, 0, 0, 0, 0x40, 0})
        AddU16(stub, value);
    stub.resize(60);
    AddU32(stub, DOS_STUB_LENGTH);
    // push cs; pop ds; print the text behind the code; end with status 1
    for (unsigned code :
         {0x0e, 0x1f, 0xba, 0x0e, 0x00, 0xb4, 0x09, 0xcd, 0x21, 0xb8, 0x01, 0x4c, 0xcd, 0x21})
        AddU8(stub, code);
    AddText(stub, "This program needs Windows.\r\n$");
    stub.resize(DOS_STUB_LENGTH);
    return stub;
}
