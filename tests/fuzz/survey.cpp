#include "exe/survey.h"

#include "content/message_table.h"
#include "content/signature.h"
#include "content/version_info.h"
#include "exe/refusal.h"
#include "export/group_file.h"
#include "tests/fuzz/fuzz.h"

#include <algorithm>

// What the resource's own layout tells.
static void ReadContent(FilePages *pages, const Survey &survey, const PictureIndex &pictures,
                        const SurveyedResource &resource)
{
    if (IsIconGroup(&resource) || IsCursorGroup(&resource)) {
        GroupFile file;
        const GroupOutcome outcome = MakeGroupFile(pages, &pictures, &resource, &file);
        Check((outcome == GroupDone) == !file.bytes.empty());
        return;
    }
    GroupFile picture;
    const int isPicture = MakePictureFile(pages, &resource, &picture);
    Check(isPicture == !picture.bytes.empty());
    std::vector<BYTE> bytes;
    if (!ReadSurveyedBytes(pages, &resource, &bytes))
        return;
    Check(bytes.size() == resource.size);
    SignatureExtension(bytes.data(), bytes.size());
    VersionInfo version;
    ReadVersionInfo(bytes.data(), bytes.size(), 1252, &version);
    const StringFormat format = {survey.kind.format == FormatNe, 1252};
    std::vector<TableText> texts;
    ReadStringTable(bytes.data(), bytes.size(), &format, FirstStringId(resource.name.number),
                    &texts);
    Check(texts.size() <= STRING_BLOCK_SLOTS);
    ReadMessageTable(bytes.data(), bytes.size(), 1252, &texts);
}

// The pictures of a group are found without the rest of the file too.
static void FindPicturesAlone(FilePages *pages, const PictureIndex &all,
                              const SurveyedResource &group)
{
    const SurveyChoice choice = ChoosePictures(pages, &group);
    Survey survey;
    PictureIndex alone;
    std::vector<GroupMember> members;
    size_t missing, missingAlone;
    Check(SurveyFile(pages, 0, &survey, &choice) == ProbeRead);
    IndexPictures(&survey, &alone);
    Check(ReadGroup(pages, &all, &group, &members, &missing) ==
          ReadGroup(pages, &alone, &group, &members, &missingAlone));
    Check(missing == missingAlone);
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FILE *file = fopen(FileOf(data, size), "rb");
    static FilePages pages;
    Survey survey;
    PictureIndex pictures;
    OpenPages(&pages, file);
    ClearFailure();
    const ProbeOutcome outcome = SurveyFile(&pages, 0, &survey);
    Check((outcome == ProbeRead) == (NotedFailure() == FailureNone));
    IndexPictures(&survey, &pictures);
    size_t left = 200; // a file may name the same bytes many times
    for (const SurveyedResource &resource : survey.resources) {
        Check(!resource.isInFile || resource.size == 0 ||
              (resource.fileOffset <= size && resource.size <= size - resource.fileOffset));
        if (left-- == 0)
            break;
        ReadContent(&pages, survey, pictures, resource);
    }
    const auto group = std::ranges::find_if(
        survey.resources, [](const SurveyedResource &resource) { return IsIconGroup(&resource); });
    if (outcome == ProbeRead && group != survey.resources.end())
        FindPicturesAlone(&pages, pictures, *group);
    fclose(file);
    return 0;
}
