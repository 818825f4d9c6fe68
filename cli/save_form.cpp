#include "cli/save_form.h"

#include "cli/save_text.h"
#include "cli/version_json.h"
#include "content/dib.h"
#include "content/picture_info.h"
#include "content/signature.h"
#include "exe/survey.h"
#include "exe/type_names.h"
#include "export/group_file.h"

#include <algorithm>

#define PART_SIZE 65536

static void SetHead(SaveForm *form, const char *extension, const std::string &text)
{
    form->extension = extension;
    form->head.assign(text.begin(), text.end());
    form->hasData = false;
}

static bool TakeGroupFile(GroupFile *file, const char *extension, SaveForm *form)
{
    form->extension = extension;
    form->head.swap(file->bytes);
    form->hasData = false;
    form->members.swap(file->members);
    form->missing = file->missing;
    return true;
}

// Each makes a form of its kind. Returns false, with the form as it was, when the resource is none
// of it.

static bool MakeGroupForm(const FormSource *source, const SurveyedResource *resource,
                          SaveForm *form)
{
    GroupFile file;
    return MakeGroupFile(source->pages, source->pictures, resource, &file) == GroupDone &&
           TakeGroupFile(&file, IsCursorGroup(resource) ? ".cur" : ".ico", form);
}

static bool MakePictureForm(const FormSource *source, const SurveyedResource *resource,
                            SaveForm *form)
{
    GroupFile file;
    return MakePictureFile(source->pages, resource, &file) &&
           TakeGroupFile(&file, resource->type.number == TYPE_CURSOR ? ".cur" : ".ico", form);
}

static bool MakeBitmapForm(const FormSource *source, const SurveyedResource *resource,
                           SaveForm *form)
{
    BYTE start[PICTURE_START_SIZE];
    PictureInfo info;
    DibHeader dib;
    const size_t size = ReadSurveyedStart(source->pages, resource, start, sizeof start);
    if (!ReadPictureInfo(start, size, PictureBitmap, &info) || info.isPng)
        return false;
    ReadDibHeader(start, (DWORD)size, &dib);
    form->extension = ".bmp";
    form->head.resize(BMP_HEADER_SIZE);
    FillBmpHeader(form->head.data(), resource->size,
                  (DWORD)(DibPixelStart(&dib) + DibMaskSize(&dib)));
    return true;
}

static bool MakeTextForm(const FormSource *source, const SurveyedResource *resource, SaveForm *form)
{
    const StringFormat format = {source->survey->kind.format == FormatNe, source->codePage};
    const int64_t firstId = resource->name.isText ? 0 : FirstStringId(resource->name.number);
    std::vector<BYTE> bytes(std::min<size_t>(resource->size, STRING_BLOCK_SIZE));
    const size_t size = ReadSurveyedStart(source->pages, resource, bytes.data(), bytes.size());
    bool isWhole;
    const std::string lines = Utf8Texts(bytes.data(), size, &format, firstId, &isWhole);
    form->isDamaged = !isWhole;
    if (isWhole)
        SetHead(form, ".txt", lines);
    return isWhole;
}

static bool MakeVersionForm(const FormSource *source, const SurveyedResource *resource,
                            SaveForm *form)
{
    std::vector<BYTE> bytes(std::min<size_t>(resource->size, MOST_VERSION_BYTES));
    VersionInfo info;
    const size_t size = ReadSurveyedStart(source->pages, resource, bytes.data(), bytes.size());
    if (!ReadVersionInfo(bytes.data(), size, source->codePage, &info))
        return false;
    SetHead(form, ".json", MakeVersionJson(&info));
    return true;
}

static bool NameForm(const FormSource *, const SurveyedResource *resource, SaveForm *form)
{
    form->extension = resource->type.number == TYPE_FONT ? ".fnt" : ".xml";
    return true;
}

static const struct {
    DWORD type;
    bool (*make)(const FormSource *source, const SurveyedResource *resource, SaveForm *form);
} makers[] = {
    {TYPE_CURSOR_GROUP, MakeGroupForm}, {TYPE_ICON_GROUP, MakeGroupForm},
    {TYPE_CURSOR, MakePictureForm},     {TYPE_ICON, MakePictureForm},
    {TYPE_BITMAP, MakeBitmapForm},      {TYPE_STRING, MakeTextForm},
    {TYPE_VERSION, MakeVersionForm},    {TYPE_FONT, NameForm},
    {TYPE_MANIFEST, NameForm},
};

void ChooseSaveForm(const FormSource *source, const SurveyedResource *resource, SaveForm *form)
{
    *form = {".bin", {}, 1, 0, {}, 0};
    for (const auto &row : makers)
        if (!resource->type.isText && resource->type.number == row.type &&
            row.make(source, resource, form))
            return;
    BYTE start[SIGNATURE_START_SIZE];
    const size_t size = ReadSurveyedStart(source->pages, resource, start, sizeof start);
    const char *extension = SignatureExtension(start, size);
    if (extension != nullptr)
        form->extension = extension;
}

uint64_t SaveFormSize(const SurveyedResource *resource, const SaveForm *form)
{
    return form->head.size() + (form->hasData ? (uint64_t)resource->size : 0);
}

WriteOutcome WriteSaveForm(FILE *stream, FilePages *pages, const SurveyedResource *resource,
                           const SaveForm *form)
{
    // What has no bytes has no address to write from.
    if (!form->head.empty() &&
        fwrite(form->head.data(), 1, form->head.size(), stream) != form->head.size())
        return WriteShort;
    std::vector<BYTE> part(form->hasData ? std::min<size_t>(resource->size, PART_SIZE) : 0);
    for (size_t at = 0; form->hasData && at < resource->size; at += part.size()) {
        const size_t count = std::min<size_t>(part.size(), resource->size - at);
        if (!ReadPages(pages, resource->fileOffset + at, part.data(), count))
            return WriteDataUnavailable;
        if (fwrite(part.data(), 1, count, stream) != count)
            return WriteShort;
    }
    return fflush(stream) == 0 ? WriteDone : WriteShort;
}
