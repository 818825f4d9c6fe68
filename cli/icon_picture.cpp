#include "cli/icon_picture.h"

#include "cli/pixels_png.h"
#include "content/dib.h"
#include "exe/survey.h"
#include "platform/codec/decode.h"
#include "platform/codec/png_file.h"

#include <algorithm>
#include <new>

#define START_SIZE 64 // bytes that tell size and depth
#define MOST_TRIES 4  // of a hostile file none of a great many can be drawn

// A picture by its own header: what the group tells of it may be 0.
struct IconCandidate {
    const GroupMember *member;
    LONG side; // pixels, the longer one
    DWORD bits;
};

static bool MeasurePicture(FilePages *pages, const GroupMember *member, IconCandidate *candidate)
{
    PngBytes start(std::min<size_t>(START_SIZE, member->size));
    PngHeader png;
    DibHeader dib;
    candidate->member = member;
    if (member->size > MOST_PICTURE_BYTES ||
        !ReadPages(pages, member->picture->fileOffset, start.data(), start.size()))
        return false;
    if (ReadPngHeader(start, &png)) {
        candidate->side = (LONG)std::max(png.width, png.height);
        candidate->bits = png.bits;
        return true;
    }
    if (!ReadDibHeader(start.data(), (DWORD)start.size(), &dib) || dib.height <= 0)
        return false;
    candidate->side = std::max(dib.width, dib.height / 2);
    candidate->bits = dib.bitCount;
    return true;
}

static std::vector<IconCandidate> SortPictures(FilePages *pages,
                                               const std::vector<GroupMember> &members, LONG size)
{
    std::vector<IconCandidate> candidates;
    for (const GroupMember &member : members) {
        IconCandidate candidate;
        if (MeasurePicture(pages, &member, &candidate))
            candidates.push_back(candidate);
    }
    std::stable_sort(candidates.begin(), candidates.end(),
                     [size](const IconCandidate &a, const IconCandidate &b) {
                         if (a.side == b.side)
                             return a.bits > b.bits;
                         const bool isEnough = a.side >= size && b.side >= size;
                         return isEnough ? a.side < b.side : a.side > b.side;
                     });
    return candidates;
}

static bool ReadPngPixels(const PngBytes &file, PicturePixels *pixels)
{
    HGLOBAL block = DecodeOrMendPng(file);
    if (block == nullptr)
        return false;
    const BYTE *dib = (const BYTE *)GlobalLock(block);
    const bool isRead = dib != nullptr && ReadDecodedPixels(dib, (DWORD)GlobalSize(block), pixels);
    GlobalUnlock(block);
    GlobalFree(block);
    return isRead;
}

static bool ReadPixels(FilePages *pages, const GroupMember *member, PicturePixels *pixels)
{
    PngBytes bytes(member->size);
    PngHeader png;
    if (!ReadPages(pages, member->picture->fileOffset, bytes.data(), bytes.size()))
        return false;
    if (ReadPngHeader(bytes, &png))
        return ReadPngPixels(bytes, pixels);
    return ReadIconPixels(bytes.data(), member->size, pixels);
}

std::vector<BYTE> MakeIconPng(FilePages *pages, const std::vector<GroupMember> &members, int size)
{
    int tries = 0;
    for (const IconCandidate &candidate : SortPictures(pages, members, size)) {
        PicturePixels pixels;
        if (ReadPixels(pages, candidate.member, &pixels)) {
            ShrinkPixels(&pixels, size);
            std::vector<BYTE> png = MakePngOf(&pixels, PngRgba);
            if (png.empty()) // only without memory
                throw std::bad_alloc();
            return png;
        }
        tries++;
        if (tries == MOST_TRIES)
            break;
    }
    return {};
}
