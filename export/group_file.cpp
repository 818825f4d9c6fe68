#include "export/group_file.h"

#include "content/byte_writer.h"
#include "content/dib.h"
#include "content/picture_info.h"
#include "exe/catalog.h"
#include "exe/survey.h"
#include "exe/type_names.h"

#include <algorithm>
#include <cstring>

#define FILE_HEADER_SIZE 6 // reserved, kind and count
#define FILE_ENTRY_SIZE 16 // the picture's offset at its end
#define CORE_HEADER_SIZE 12
#define MOST_FILE_BYTES 0x10000000u // a group may name one picture 65535 times

static BYTE DirectoryLength(unsigned length)
{
    return length < 256 ? (BYTE)length : (BYTE)0;
}

// A cursor's directory entry up to its size. data begins with the hot spot.
static void PutCursorEntry(BYTE *entry, const GroupMember *member, const BYTE *data)
{
    DibHeader dib;
    unsigned width = member->told.width, height = member->told.height / 2;
    if (ReadDibHeader(data + CURSOR_HOT_SPOT_SIZE, member->size - CURSOR_HOT_SPOT_SIZE, &dib) &&
        (dib.headerSize == sizeof(BITMAPINFOHEADER) || dib.headerSize == CORE_HEADER_SIZE)) {
        width = (unsigned)dib.width;
        height = (unsigned)dib.height / 2;
    }
    entry[0] = DirectoryLength(width);
    entry[1] = DirectoryLength(height);
    memcpy(entry + 4, data, CURSOR_HOT_SPOT_SIZE);
}

static void PutIconEntry(BYTE *entry, const GroupMember *member)
{
    entry[0] = (BYTE)member->told.width;
    entry[1] = (BYTE)member->told.height;
    entry[2] = member->told.colorCount;
    entry[3] = member->told.reserved;
    PutU16(entry + 4, member->told.planes);
    PutU16(entry + 6, member->told.bitCount);
}

// Adds a picture at the end of the file and fills its entry of the directory.
static bool AddPicture(FilePages *pages, const GroupMember *member, size_t entryOffset,
                       bool isCursor, std::vector<BYTE> *file)
{
    const size_t start = file->size();
    file->resize(start + member->size);
    if (!ReadPages(pages, member->picture->fileOffset, file->data() + start, member->size))
        return false;
    BYTE *entry = file->data() + entryOffset;
    DWORD size = member->size;
    if (isCursor) {
        PutCursorEntry(entry, member, file->data() + start);
        file->erase(file->begin() + (ptrdiff_t)start,
                    file->begin() + (ptrdiff_t)(start + CURSOR_HOT_SPOT_SIZE));
        size -= CURSOR_HOT_SPOT_SIZE;
    } else {
        PutIconEntry(entry, member);
    }
    PutU32(entry + 8, size);
    PutU32(entry + 12, (DWORD)start);
    return true;
}

// Makes the file of its members.
static GroupOutcome FillGroupFile(FilePages *pages, bool isCursor, GroupFile *file)
{
    const size_t directorySize = FILE_HEADER_SIZE + file->members.size() * FILE_ENTRY_SIZE;
    unsigned long long total = directorySize;
    for (const GroupMember &member : file->members)
        total += member.size;
    if (total > std::min<unsigned long long>(KeptBytesLimit(pages->length), MOST_FILE_BYTES))
        return GroupTooLarge;
    file->bytes.reserve((size_t)total);
    file->bytes.resize(directorySize);
    PutU16(file->bytes.data() + 2, isCursor ? 2 : 1);
    PutU16(file->bytes.data() + 4, (WORD)file->members.size());
    size_t entry = FILE_HEADER_SIZE;
    for (const GroupMember &member : file->members) {
        if (!AddPicture(pages, &member, entry, isCursor, &file->bytes)) {
            file->bytes.clear();
            return GroupUnreadable;
        }
        entry += FILE_ENTRY_SIZE;
    }
    return GroupDone;
}

GroupOutcome MakeGroupFile(FilePages *pages, const PictureIndex *index,
                           const SurveyedResource *group, GroupFile *file)
{
    file->bytes.clear();
    const GroupOutcome outcome = ReadGroup(pages, index, group, &file->members, &file->missing);
    return outcome == GroupDone ? FillGroupFile(pages, IsCursorGroup(group), file) : outcome;
}

bool MakePictureFile(FilePages *pages, const SurveyedResource *picture, GroupFile *file)
{
    const bool isCursor = !picture->type.isText && picture->type.number == TYPE_CURSOR;
    BYTE start[PICTURE_START_SIZE];
    PictureInfo info;
    const size_t size = ReadSurveyedStart(pages, picture, start, sizeof start);
    *file = {};
    if (!ReadPictureInfo(start, size, isCursor ? PictureCursor : PictureIcon, &info))
        return false;
    GroupMember member = {{}, picture->size, picture};
    member.told.width = DirectoryLength((unsigned)info.width);
    // As compilers tell a cursor's, with its mask.
    member.told.height = (WORD)(DirectoryLength((unsigned)info.height) * (isCursor ? 2 : 1));
    member.told.colorCount = info.bits < 8 ? (BYTE)(1 << info.bits) : (BYTE)0;
    member.told.planes = 1;
    member.told.bitCount = (WORD)info.bits;
    file->members.push_back(member);
    return FillGroupFile(pages, isCursor, file) == GroupDone;
}
