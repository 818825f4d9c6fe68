#include "cli/list_survey.h"

#include "cli/picture_kind.h"
#include "cli/survey_words.h"
#include "exe/picture_groups.h"
#include "exe/survey.h"

// Reads what a picture's first bytes tell. Returns false when they tell nothing.
static bool ReadInfo(FilePages *pages, const SurveyedResource &resource, PictureKind kind,
                     PictureInfo *info)
{
    BYTE start[PICTURE_START_SIZE];
    const size_t size = ReadSurveyedStart(pages, &resource, start, sizeof start);
    return ReadPictureInfo(start, size, kind, info);
}

static std::string ResourceToText(FilePages *pages, const Survey &survey,
                                  const SurveyedResource &resource)
{
    PictureKind kind;
    PictureInfo info;
    std::string line = "  " + IdToText(resource.name);
    if (survey.kind.format != FormatNe)
        line += "  " + LanguageToText(resource.language);
    line += "  " + std::to_string(resource.size) + " bytes";
    if (IsPicture(resource, &kind) && ReadInfo(pages, resource, kind, &info))
        line += "  " + std::to_string(info.width) + " x " + std::to_string(info.height) + ", " +
                std::to_string(info.bits) + (info.bits == 1 ? " bit" : " bits");
    return line + (resource.isInFile ? "\n" : "  not in the file\n");
}

void AppendSurveyLines(Listing *listing, FilePages *pages, const Survey &survey)
{
    const SurveyId *type = nullptr;
    for (const SurveyedResource &resource : survey.resources) {
        if (listing->failed)
            break;
        if (type == nullptr || type->isText != resource.type.isText ||
            type->number != resource.type.number || type->text != resource.type.text)
            AppendText(listing, TypeToText(resource.type) + "\n");
        type = &resource.type;
        AppendText(listing, ResourceToText(pages, survey, resource));
    }
}

static void AddFormatFields(JsonObject *object, const Survey &survey,
                            const SurveyedResource &resource)
{
    if (survey.kind.format == FormatNe) {
        AddNumberField(object, "flags", resource.flags);
        return;
    }
    AddLanguageFields(object, resource.language);
    AddNumberField(object, "codePage", resource.codePage);
}

static void AddPicture(JsonObject *object, FilePages *pages, const PictureGroups &groups,
                       const SurveyedResource &resource)
{
    PictureKind kind;
    PictureInfo info;
    if (!IsPicture(resource, &kind))
        return;
    AddPictureFields(object, ReadInfo(pages, resource, kind, &info) ? &info : nullptr);
    if (kind == PictureBitmap)
        return;
    const SurveyedResource *group = FindPictureGroup(&groups, &resource);
    if (group != nullptr)
        AddIdField(object, "group", group->name);
    else
        AddField(object, "group", "null");
}

void AppendSurveyObjects(Listing *listing, FilePages *pages, const Survey &survey,
                         const std::string &path)
{
    PictureGroups groups;
    ReadPictureGroups(pages, &survey, &groups);
    for (const SurveyedResource &resource : survey.resources) {
        if (listing->failed)
            break;
        JsonObject object;
        AddTextField(&object, "file", path);
        AddIdField(&object, "type", resource.type);
        AddIdField(&object, "name", resource.name);
        AddFormatFields(&object, survey, resource);
        if (resource.isInFile)
            AddNumberField(&object, "fileOffset", resource.fileOffset);
        else
            AddField(&object, "fileOffset", "null");
        AddNumberField(&object, "size", resource.size);
        AddPicture(&object, pages, groups, resource);
        AppendObject(listing, object);
    }
}
