#include "exe/picture_groups.h"

#include "exe/catalog.h"
#include "exe/survey.h"
#include "exe/type_names.h"
#include "platform/byte_reader.h"

#define GROUP_HEADER_SIZE 6 // reserved, kind and count
#define GROUP_ENTRY_SIZE 14 // the picture's number at its end

static DWORD PictureType(const SurveyedResource *group)
{
    if (group->type.isText)
        return 0;
    return group->type.number == TYPE_ICON_GROUP     ? TYPE_ICON
           : group->type.number == TYPE_CURSOR_GROUP ? TYPE_CURSOR
                                                     : 0;
}

void ReadPictureGroups(FilePages *pages, const Survey *survey, PictureGroups *groups)
{
    unsigned long long bytesLeft = KeptBytesLimit(pages->length);
    std::vector<BYTE> bytes;
    for (const SurveyedResource &group : survey->resources) {
        const DWORD type = PictureType(&group);
        if (type == 0 || group.size > bytesLeft || !ReadSurveyedBytes(pages, &group, &bytes))
            continue;
        bytesLeft -= group.size;
        ByteReader reader = OpenBytes(bytes.data(), bytes.size());
        const int count = ReadU16(&reader, 4);
        for (int i = 0; i < count; i++) {
            const size_t entry = GROUP_HEADER_SIZE + (size_t)i * GROUP_ENTRY_SIZE;
            const WORD number = ReadU16(&reader, entry + GROUP_ENTRY_SIZE - 2);
            if (reader.failed)
                break;
            groups->ofPicture.try_emplace({type, number, group.language}, &group);
        }
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
