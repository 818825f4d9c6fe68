#include "export/group_file.h"

#include "content/byte_writer.h"
#include "content/dib.h"
#include "exe/catalog.h"
#include "exe/survey.h"
#include "exe/type_names.h"
#include "platform/byte_reader.h"

#include <algorithm>
#include <cstring>

#define ANY_LANGUAGE 0x10000 // past every language
#define GROUP_HEADER_SIZE 6  // reserved, kind and count, in the resource and in the file
#define GROUP_ENTRY_SIZE 14  // in the resource: the picture's number at its end
#define FILE_ENTRY_SIZE 16   // in the file: the picture's offset there
#define HOT_SPOT_SIZE 4
#define CORE_HEADER_SIZE 12
#define MOST_FILE_BYTES 0x10000000u // a group may name one picture 65535 times

static int HasType(const SurveyedResource *resource, DWORD number)
{
    return !resource->type.isText && resource->type.number == number;
}

int IsIconGroup(const SurveyedResource *resource)
{
    return HasType(resource, TYPE_ICON_GROUP);
}

int IsCursorGroup(const SurveyedResource *resource)
{
    return HasType(resource, TYPE_CURSOR_GROUP);
}

void IndexPictures(const Survey *survey, PictureIndex *index)
{
    index->pictures.clear();
    index->isNe = survey->kind.format == FormatNe;
    for (const SurveyedResource &picture : survey->resources) {
        const int isCursor = HasType(&picture, TYPE_CURSOR);
        if (!picture.isInFile || picture.name.isText ||
            (!isCursor && !HasType(&picture, TYPE_ICON)) ||
            picture.size <= (isCursor ? HOT_SPOT_SIZE : 0))
            continue;
        const DWORD type = picture.type.number, number = picture.name.number;
        for (const DWORD language : {(DWORD)picture.language, (DWORD)ANY_LANGUAGE})
            index->pictures.try_emplace({type, number, language}, &picture);
    }
}

static const SurveyedResource *FindPicture(const PictureIndex *index, const SurveyedResource *group,
                                           DWORD number)
{
    const DWORD type = IsCursorGroup(group) ? TYPE_CURSOR : TYPE_ICON;
    for (const DWORD language : {(DWORD)group->language, (DWORD)ANY_LANGUAGE}) {
        const auto found = index->pictures.find({type, number, language});
        if (found != index->pictures.end())
            return found->second;
    }
    return nullptr;
}

static GroupMember ReadMember(ByteReader *reader, int isCursor)
{
    GroupMember member = {};
    const WORD first = TakeU16(reader), second = TakeU16(reader);
    if (isCursor) {
        member.width = first;
        member.height = second;
    } else {
        member.width = (BYTE)first;
        member.height = (BYTE)(first >> 8);
        member.colorCount = (BYTE)second;
        member.reserved = (BYTE)(second >> 8);
    }
    member.planes = TakeU16(reader);
    member.bitCount = TakeU16(reader);
    member.size = TakeU32(reader);
    return member;
}

GroupOutcome ReadGroup(FilePages *pages, const PictureIndex *index, const SurveyedResource *group,
                       std::vector<GroupMember> *members, size_t *missing)
{
    std::vector<BYTE> bytes;
    members->clear();
    *missing = 0;
    if (!ReadSurveyedBytes(pages, group, &bytes))
        return GroupUnreadable;
    ByteReader reader = OpenBytes(bytes.data(), bytes.size());
    const DWORD least = IsCursorGroup(group) ? HOT_SPOT_SIZE : 0;
    const size_t count = ReadU16(&reader, 4);
    SkipBytes(&reader, GROUP_HEADER_SIZE);
    if (reader.failed)
        return GroupUnreadable;
    for (size_t i = 0; i < count; i++) {
        GroupMember member = ReadMember(&reader, IsCursorGroup(group));
        const WORD number = TakeU16(&reader);
        if (reader.failed)
            break;
        member.picture = FindPicture(index, group, number);
        if (member.picture == nullptr)
            continue;
        // Only the group tells where a padded picture ends.
        const int isPadded = index->isNe && member.size > least;
        member.size = isPadded ? std::min(member.size, member.picture->size) : member.picture->size;
        members->push_back(member);
    }
    *missing = count - members->size();
    return members->empty() ? GroupEmpty : GroupDone;
}

static BYTE DirectoryLength(unsigned length)
{
    return length < 256 ? (BYTE)length : (BYTE)0;
}

// A cursor's directory entry up to its size. data begins with the hot spot.
static void PutCursorEntry(BYTE *entry, const GroupMember *member, const BYTE *data)
{
    DibHeader dib;
    unsigned width = member->width, height = member->height / 2;
    if (ReadDibHeader(data + HOT_SPOT_SIZE, member->size - HOT_SPOT_SIZE, &dib) &&
        (dib.headerSize == sizeof(BITMAPINFOHEADER) || dib.headerSize == CORE_HEADER_SIZE)) {
        width = (unsigned)dib.width;
        height = (unsigned)dib.height / 2;
    }
    entry[0] = DirectoryLength(width);
    entry[1] = DirectoryLength(height);
    memcpy(entry + 4, data, HOT_SPOT_SIZE);
}

static void PutIconEntry(BYTE *entry, const GroupMember *member)
{
    entry[0] = (BYTE)member->width;
    entry[1] = (BYTE)member->height;
    entry[2] = member->colorCount;
    entry[3] = member->reserved;
    PutU16(entry + 4, member->planes);
    PutU16(entry + 6, member->bitCount);
}

// Adds a picture at the end of the file and fills its entry of the directory.
static int AddPicture(FilePages *pages, const GroupMember *member, size_t entryOffset, int isCursor,
                      std::vector<BYTE> *file)
{
    const size_t start = file->size();
    file->resize(start + member->size);
    if (!ReadPages(pages, member->picture->fileOffset, file->data() + start, member->size))
        return 0;
    BYTE *entry = file->data() + entryOffset;
    DWORD size = member->size;
    if (isCursor) {
        PutCursorEntry(entry, member, file->data() + start);
        file->erase(file->begin() + (ptrdiff_t)start,
                    file->begin() + (ptrdiff_t)(start + HOT_SPOT_SIZE));
        size -= HOT_SPOT_SIZE;
    } else {
        PutIconEntry(entry, member);
    }
    PutU32(entry + 8, size);
    PutU32(entry + 12, (DWORD)start);
    return 1;
}

GroupOutcome MakeGroupFile(FilePages *pages, const PictureIndex *index,
                           const SurveyedResource *group, GroupFile *file)
{
    std::vector<GroupMember> members;
    file->bytes.clear();
    const GroupOutcome outcome = ReadGroup(pages, index, group, &members, &file->missing);
    if (outcome != GroupDone)
        return outcome;
    const size_t directorySize = GROUP_HEADER_SIZE + members.size() * FILE_ENTRY_SIZE;
    unsigned long long total = directorySize;
    for (const GroupMember &member : members)
        total += member.size;
    if (total > std::min<unsigned long long>(KeptBytesLimit(pages->length), MOST_FILE_BYTES))
        return GroupTooLarge;
    file->bytes.reserve((size_t)total);
    file->bytes.resize(directorySize);
    PutU16(file->bytes.data() + 2, IsCursorGroup(group) ? 2 : 1);
    PutU16(file->bytes.data() + 4, (WORD)members.size());
    size_t entry = GROUP_HEADER_SIZE;
    for (const GroupMember &member : members) {
        if (!AddPicture(pages, &member, entry, IsCursorGroup(group), &file->bytes)) {
            file->bytes.clear();
            return GroupUnreadable;
        }
        entry += FILE_ENTRY_SIZE;
    }
    return GroupDone;
}
