#include "cli/page_parts.h"
#include "cli/picture_kind.h"
#include "cli/pixels_png.h"
#include "cli/survey_words.h"
#include "platform/byte_reader.h"
#include "platform/picture_limit.h"

#include <new>

#define HOT_SPOT_SIZE 4
#define MOST_MARKERS 100 // of a JPEG file in front of the one that tells its size

// How a picture is stored, and what its first bytes tell.
struct PagePicture {
    const char *mediaType; // of one that browsers draw as it is stored, else NULL
    PictureKind kind;      // of another
    PictureInfo info;
};

// The size of a GIF file (CompuServe's GIF89a) behind its signature.
static void MeasureGif(const BYTE *start, size_t size, PictureInfo *info)
{
    ByteReader reader = OpenBytes(start, size);
    info->width = ReadU16(&reader, 6);
    info->height = ReadU16(&reader, 8);
}

// The size of a JPEG file (ITU-T T.81), which its frame header tells: one of the markers 0xC0 to
// 0xCF but for three that have other meanings.
static void MeasureJpeg(FilePages *pages, const SurveyedResource &resource, PictureInfo *info)
{
    BYTE marker[9];
    uint64_t at = 2;
    for (int i = 0; i < MOST_MARKERS && at + sizeof marker <= resource.size; i++) {
        if (!ReadPages(pages, resource.fileOffset + at, marker, sizeof marker) || marker[0] != 0xFF)
            return;
        const bool isFrame = (marker[1] & 0xF0) == 0xC0 && marker[1] != 0xC4 && marker[1] != 0xC8 &&
                             marker[1] != 0xCC;
        if (isFrame) {
            info->height = marker[5] << 8 | marker[6];
            info->width = marker[7] << 8 | marker[8];
            return;
        }
        at += 2 + (uint64_t)(marker[2] << 8 | marker[3]);
    }
}

// Finds out what a picture is. Returns false when it is none that can be drawn.
static bool MeasurePicture(PageFile *file, const SurveyedResource &resource, PagePicture *picture)
{
    BYTE start[PICTURE_START_SIZE];
    const size_t size = ReadSurveyedStart(&file->pages, &resource, start, sizeof start);
    picture->mediaType = nullptr;
    picture->info = {};
    const StoredMedium *medium = FindStoredMedium(&file->pages, resource);
    const bool isDib = IsPicture(resource, &picture->kind);
    if (!isDib && medium == nullptr) // the file has changed
        return false;
    const std::string type = medium == nullptr ? "" : medium->type;
    if (isDib || type == "image/png")
        ReadPictureInfo(start, size, picture->kind, &picture->info);
    else if (type == "image/gif")
        MeasureGif(start, size, &picture->info);
    else if (type == "image/jpeg")
        MeasureJpeg(&file->pages, resource, &picture->info);
    if (picture->info.isPng)
        picture->mediaType = "image/png";
    else if (!isDib)
        picture->mediaType = medium->type;
    const PictureInfo *info = &picture->info;
    return info->width > 0 && info->height > 0 &&
           (DWORD)info->width <= mostDecodedPixels / (DWORD)info->height;
}

static bool ReadPixels(PageFile *file, const SurveyedResource &resource, PictureKind kind,
                       PicturePixels *pixels)
{
    std::vector<BYTE> bytes;
    if (resource.size > MOST_PICTURE_BYTES || !ReadSurveyedBytes(&file->pages, &resource, &bytes))
        return false;
    const size_t before = kind == PictureCursor ? HOT_SPOT_SIZE : 0;
    if (bytes.size() < before)
        return false;
    const BYTE *dib = bytes.data() + before;
    const DWORD size = (DWORD)(bytes.size() - before);
    return kind == PictureBitmap ? ReadBitmapPixels(dib, size, pixels)
                                 : ReadIconPixels(dib, size, pixels);
}

// What is below a picture.
static std::string Caption(const PageFile *file, const SurveyedResource &resource,
                           const PictureInfo &info)
{
    std::string caption = ResourceTitle(file, resource) + "<br>";
    if (info.width > 0)
        caption += std::to_string(info.width) + " x " + std::to_string(info.height);
    if (info.bits > 0)
        caption += ", " + std::to_string(info.bits) + (info.bits == 1 ? " bit" : " bits");
    const SurveyedResource *group = FindPictureGroup(&file->groups, &resource);
    if (group != nullptr)
        caption += "<br>of group " + HtmlName(IdToText(group->name));
    return caption;
}

static std::string ImageStart(const SurveyedResource &resource, const PictureInfo &info)
{
    return "<img width=\"" + std::to_string(info.width) + "\" height=\"" +
           std::to_string(info.height) + "\" alt=\"" + HtmlAttribute(TypeToText(resource.type)) +
           " " + HtmlAttribute(IdToText(resource.name)) + "\" src=\"";
}

static void AppendFigure(PageFile *file, const SurveyedResource &resource, const PictureInfo &info,
                         const std::vector<BYTE> &png)
{
    AppendHtml(file->page, "<figure" + IdAttribute(file, resource) + ">" +
                               ImageStart(resource, info) + "data:image/png;base64,");
    AppendBase64(file->page, png.data(), png.size());
    AppendHtml(file->page,
               "\"><figcaption>" + Caption(file, resource, info) + "</figcaption></figure>\n");
}

static bool AppendStored(PageFile *file, const SurveyedResource &resource,
                         const PagePicture &picture)
{
    if (!TakeBytes(file, resource.size) || !HasRoomForBase64(file->page, resource.size))
        return false;
    AppendHtml(file->page,
               "<figure" + IdAttribute(file, resource) + ">" + ImageStart(resource, picture.info));
    const DWORD start = picture.kind == PictureCursor ? HOT_SPOT_SIZE : 0;
    const bool isRead = AppendDataAddress(file, resource, start, picture.mediaType);
    AppendHtml(file->page, "\"><figcaption>" + Caption(file, resource, picture.info) +
                               "</figcaption></figure>\n");
    return isRead;
}

static bool AppendUndrawn(PageFile *file, const SurveyedResource &resource, const PictureInfo &info)
{
    file->undrawn++;
    AppendHtml(file->page, "<figure" + IdAttribute(file, resource) +
                               "><p class=\"fault\">It cannot be drawn.</p><figcaption>" +
                               Caption(file, resource, info) + "</figcaption></figure>\n");
    return true;
}

bool AppendPicture(PageFile *file, const SurveyedResource &resource)
{
    PagePicture picture;
    PicturePixels pixels;
    if (!MeasurePicture(file, resource, &picture))
        return AppendUndrawn(file, resource, picture.info);
    if (picture.mediaType != nullptr)
        return AppendStored(file, resource, picture);
    const uint64_t count = (uint64_t)picture.info.width * (uint64_t)picture.info.height;
    if (count > file->pixelsLeft) {
        file->leftOut++;
        return false;
    }
    if (!TakeBytes(file, resource.size))
        return false;
    file->pixelsLeft -= count;
    if (!ReadPixels(file, resource, picture.kind, &pixels))
        return AppendUndrawn(file, resource, picture.info);
    const std::vector<BYTE> png = MakePngOf(&pixels, PngFewest);
    if (png.empty()) // of pixels that fit, only without memory
        throw std::bad_alloc();
    const bool fits = HasRoomForBase64(file->page, png.size());
    if (fits)
        AppendFigure(file, resource, picture.info, png);
    return fits;
}
