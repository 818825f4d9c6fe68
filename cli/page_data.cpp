#include "cli/page_parts.h"
#include "cli/survey_words.h"
#include "content/signature.h"
#include "exe/type_names.h"

#include <algorithm>
#include <cstring>

#define PIECE_SIZE 49152 // of three bytes a group
#define ROW_SIZE 16      // bytes
#define MOST_ROWS 8

bool TakeBytes(PageFile *file, uint64_t size)
{
    if (size > file->bytesLeft) {
        file->leftOut++;
        return false;
    }
    file->bytesLeft -= size;
    return true;
}

std::string IdAttribute(const PageFile *file, const SurveyedResource &resource)
{
    return " id=\"f" + std::to_string(file->number) + "r" +
           std::to_string(&resource - file->survey.resources.data()) + "\"";
}

std::string ResourceTitle(const PageFile *file, const SurveyedResource &resource)
{
    std::string title = "<b>" + HtmlName(TypeToText(resource.type)) + " " +
                        HtmlName(IdToText(resource.name)) + "</b>";
    if (file->survey.kind.format != FormatNe)
        title += " " + LanguageToText(resource.language);
    return title;
}

static const struct {
    const char *extension;
    StoredMedium medium;
} media[] = {
    {".png", {PartPictures, "image/png"}},
    {".jpg", {PartPictures, "image/jpeg"}},
    {".gif", {PartPictures, "image/gif"}},
    {".wav", {PartSounds, "audio/wav"}},
};

const StoredMedium *FindStoredMedium(FilePages *pages, const SurveyedResource &resource)
{
    BYTE start[SIGNATURE_START_SIZE];
    const size_t size = ReadSurveyedStart(pages, &resource, start, sizeof start);
    const char *extension = SignatureExtension(start, size);
    for (const auto &row : media)
        if (extension != nullptr && strcmp(extension, row.extension) == 0)
            return &row.medium;
    return nullptr;
}

PagePartId PartOf(FilePages *pages, const SurveyedResource &resource)
{
    if (!resource.isInFile || resource.size == 0)
        return PartNone;
    switch (resource.type.isText ? 0 : resource.type.number) {
    case TYPE_CURSOR:
    case TYPE_BITMAP:
    case TYPE_ICON: return PartPictures;
    case TYPE_STRING: return PartStrings;
    case TYPE_MESSAGE_TABLE: return PartMessages;
    case TYPE_VERSION: return PartVersion;
    case TYPE_CURSOR_GROUP:
    case TYPE_ICON_GROUP: return PartNone;
    default: break;
    }
    const StoredMedium *medium = FindStoredMedium(pages, resource);
    return medium == nullptr ? PartData : medium->part;
}

bool AppendDataAddress(PageFile *file, const SurveyedResource &resource, DWORD start,
                       const char *mediaType)
{
    BYTE piece[PIECE_SIZE];
    AppendHtml(file->page, std::string("data:") + mediaType + ";base64,");
    size_t size;
    for (uint64_t at = start; at < resource.size; at += size) {
        size = (size_t)std::min<uint64_t>(PIECE_SIZE, resource.size - at);
        if (!ReadPages(&file->pages, resource.fileOffset + at, piece, size))
            return false;
        AppendBase64(file->page, piece, size);
    }
    return true;
}

bool AppendSound(PageFile *file, const SurveyedResource &resource)
{
    const StoredMedium *medium = FindStoredMedium(&file->pages, resource);
    if (medium == nullptr || !TakeBytes(file, resource.size) ||
        !HasRoomForBase64(file->page, resource.size))
        return false;
    AppendHtml(file->page, "<figure" + IdAttribute(file, resource) +
                               "><audio controls preload=\"metadata\" src=\"");
    const bool isRead = AppendDataAddress(file, resource, 0, medium->type);
    AppendHtml(file->page, "\"></audio><figcaption>" + ResourceTitle(file, resource) + " · " +
                               std::to_string(resource.size) + " bytes</figcaption></figure>\n");
    return isRead;
}

// A row: offset, bytes in hexadecimal, and as text.
static std::string DumpRow(DWORD offset, const BYTE *bytes, size_t size)
{
    char number[16];
    std::string text;
    snprintf(number, sizeof number, "%08X ", (unsigned)offset);
    std::string row = number;
    for (size_t i = 0; i < ROW_SIZE; i++) {
        snprintf(number, sizeof number, i < size ? " %02X" : "   ", i < size ? bytes[i] : 0u);
        row += number;
        if (i < size)
            text += bytes[i] >= ' ' && bytes[i] < 0x7F ? (char)bytes[i] : '.';
    }
    return row + "  " + HtmlText(text) + "\n";
}

bool AppendData(PageFile *file, const SurveyedResource &resource)
{
    BYTE bytes[MOST_ROWS * ROW_SIZE];
    if (!TakeBytes(file, std::min<size_t>(sizeof bytes, resource.size)))
        return false;
    const size_t size = ReadSurveyedStart(&file->pages, &resource, bytes, sizeof bytes);
    AppendHtml(file->page, "<details" + IdAttribute(file, resource) + "><summary>" +
                               ResourceTitle(file, resource) + " · " +
                               std::to_string(resource.size) + " bytes</summary><pre>");
    for (size_t at = 0; at < size; at += ROW_SIZE)
        AppendHtml(file->page,
                   DumpRow((DWORD)at, bytes + at, std::min<size_t>(ROW_SIZE, size - at)));
    const std::string more =
        size < resource.size
            ? "<p class=\"faint\">" + std::to_string(resource.size - size) + " bytes more</p>"
            : "";
    AppendHtml(file->page, "</pre>" + more + "</details>\n");
    return true;
}
