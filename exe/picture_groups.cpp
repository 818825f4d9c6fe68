#include "exe/picture_groups.h"

#include "exe/catalog.h"
#include "exe/survey.h"
#include "exe/type_names.h"

#include <algorithm>

#define ANY_LANGUAGE 0x10000 // past every language

static bool HasType(const SurveyedResource *resource, DWORD number)
{
    return !resource->type.isText && resource->type.number == number;
}

bool IsIconGroup(const SurveyedResource *resource)
{
    return HasType(resource, TYPE_ICON_GROUP);
}

bool IsCursorGroup(const SurveyedResource *resource)
{
    return HasType(resource, TYPE_CURSOR_GROUP);
}

// The type of a group's pictures.
static DWORD PictureType(const SurveyedResource *group)
{
    return IsCursorGroup(group) ? TYPE_CURSOR : TYPE_ICON;
}

void ReadPictureGroups(FilePages *pages, const Survey *survey, PictureGroups *groups)
{
    unsigned long long bytesLeft = KeptBytesLimit(pages->length);
    std::vector<BYTE> bytes;
    std::vector<GroupEntry> entries;
    size_t count;
    for (const SurveyedResource &group : survey->resources) {
        if ((!IsIconGroup(&group) && !IsCursorGroup(&group)) || group.size > bytesLeft ||
            !ReadSurveyedBytes(pages, &group, &bytes))
            continue;
        bytesLeft -= group.size;
        ReadGroupEntries(bytes.data(), bytes.size(), IsCursorGroup(&group), &entries, &count);
        for (const GroupEntry &entry : entries)
            groups->ofPicture.try_emplace({PictureType(&group), entry.number, group.language},
                                          &group);
    }
}

const SurveyedResource *FindPictureGroup(const PictureGroups *groups,
                                         const SurveyedResource *picture)
{
    if (picture->type.isText || picture->name.isText)
        return nullptr;
    const DWORD type = picture->type.number, number = picture->name.number;
    const auto exact = groups->ofPicture.find({type, number, picture->language});
    if (exact != groups->ofPicture.end())
        return exact->second;
    const auto any = groups->ofPicture.lower_bound({type, number, (WORD)0});
    if (any == groups->ofPicture.end() || std::get<0>(any->first) != type ||
        std::get<1>(any->first) != number)
        return nullptr;
    return any->second;
}

SurveyChoice ChoosePictures(FilePages *pages, const SurveyedResource *group)
{
    SurveyChoice choice = {PictureType(group), {}};
    std::vector<BYTE> bytes;
    std::vector<GroupEntry> entries;
    size_t count;
    if (!ReadSurveyedBytes(pages, group, &bytes))
        return choice;
    ReadGroupEntries(bytes.data(), bytes.size(), IsCursorGroup(group), &entries, &count);
    for (const GroupEntry &entry : entries)
        choice.names.push_back(entry.number);
    std::sort(choice.names.begin(), choice.names.end());
    return choice;
}

void IndexPictures(const Survey *survey, PictureIndex *index)
{
    index->pictures.clear();
    index->isNe = survey->kind.format == FormatNe;
    for (const SurveyedResource &picture : survey->resources) {
        const bool isCursor = HasType(&picture, TYPE_CURSOR);
        if (!picture.isInFile || picture.name.isText ||
            (!isCursor && !HasType(&picture, TYPE_ICON)) ||
            picture.size <= (isCursor ? CURSOR_HOT_SPOT_SIZE : 0))
            continue;
        const DWORD type = picture.type.number, number = picture.name.number;
        for (const DWORD language : {(DWORD)picture.language, (DWORD)ANY_LANGUAGE})
            index->pictures.try_emplace({type, number, language}, &picture);
    }
}

static const SurveyedResource *FindPicture(const PictureIndex *index, const SurveyedResource *group,
                                           DWORD number)
{
    for (const DWORD language : {(DWORD)group->language, (DWORD)ANY_LANGUAGE}) {
        const auto found = index->pictures.find({PictureType(group), number, language});
        if (found != index->pictures.end())
            return found->second;
    }
    return nullptr;
}

GroupOutcome ReadGroup(FilePages *pages, const PictureIndex *index, const SurveyedResource *group,
                       std::vector<GroupMember> *members, size_t *missing)
{
    std::vector<BYTE> bytes;
    std::vector<GroupEntry> entries;
    size_t count;
    members->clear();
    *missing = 0;
    if (!ReadSurveyedBytes(pages, group, &bytes) ||
        !ReadGroupEntries(bytes.data(), bytes.size(), IsCursorGroup(group), &entries, &count))
        return GroupUnreadable;
    const DWORD least = IsCursorGroup(group) ? CURSOR_HOT_SPOT_SIZE : 0;
    for (const GroupEntry &entry : entries) {
        const SurveyedResource *picture = FindPicture(index, group, entry.number);
        if (picture == nullptr)
            continue;
        // Only the group tells where a padded picture ends.
        const bool isPadded = index->isNe && entry.size > least;
        const DWORD size = isPadded ? std::min(entry.size, picture->size) : picture->size;
        members->push_back({entry, size, picture});
    }
    *missing = count - members->size();
    return members->empty() ? GroupEmpty : GroupDone;
}
