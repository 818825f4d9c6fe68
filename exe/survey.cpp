#include "exe/survey.h"

#include "exe/pe_image.h"
#include "exe/refusal.h"
#include "exe/survey_readers.h"
#include "platform/byte_reader.h"

#include <algorithm>

#define NE_FLAGS_FIELD 12
#define NE_FLAG_LIBRARY 0x8000

uint64_t NameBytesOf(const SurveyedResource *resource)
{
    return (uint64_t)resource->type.text.size() + resource->name.text.size();
}

static ProbeOutcome IdentifyPe(FilePages *pages, ExecutableKind *kind)
{
    PeImage image;
    if (!ReadPeImage(pages, kind->headerOffset, &image)) {
        NoteFailure(FailureHeaders, kind->headerOffset);
        return ProbeFailed;
    }
    kind->format = image.is64Bit ? FormatPe32Plus : FormatPe32;
    kind->machine = image.machine;
    kind->isLibrary = image.isLibrary;
    return ProbeRead;
}

ProbeOutcome IdentifyFile(FilePages *pages, ExecutableKind *kind)
{
    NewHeader header;
    *kind = {};
    const ProbeOutcome outcome = FindNewHeader(pages, &header);
    if (outcome != ProbeRead)
        return outcome;
    kind->headerOffset = header.offset;
    if (header.signature == PE_SIGNATURE)
        return IdentifyPe(pages, kind);
    BYTE flags[2] = {};
    ReadPages(pages, (uint64_t)header.offset + NE_FLAGS_FIELD, flags, sizeof flags);
    ByteReader reader = OpenBytes(flags, sizeof flags);
    kind->format = FormatNe;
    kind->isLibrary = (ReadU16(&reader, 0) & NE_FLAG_LIBRARY) != 0;
    return ProbeRead;
}

bool ChoosesType(const SurveyChoice *choice, bool isText, DWORD number)
{
    return choice == nullptr || (!isText && number == choice->type);
}

bool ChoosesName(const SurveyChoice *choice, bool isText, DWORD number)
{
    if (choice == nullptr || choice->names.empty())
        return true;
    return !isText && std::binary_search(choice->names.begin(), choice->names.end(), number);
}

ProbeOutcome SurveyFile(FilePages *pages, UINT codePage, Survey *survey, const SurveyChoice *choice)
{
    survey->resources.clear();
    const ProbeOutcome outcome = IdentifyFile(pages, &survey->kind);
    if (outcome != ProbeRead)
        return outcome;
    const bool result = survey->kind.format == FormatNe
                            ? SurveyNeResources(pages, codePage, choice, survey)
                            : SurveyPeResources(pages, choice, survey);
    return result ? ProbeRead : ProbeFailed;
}

bool ReadSurveyedBytes(FilePages *pages, const SurveyedResource *resource, std::vector<BYTE> *bytes)
{
    bytes->clear();
    if (!resource->isInFile)
        return false;
    bytes->resize(resource->size);
    // What has no length may point anywhere.
    if (bytes->empty() || ReadPages(pages, resource->fileOffset, bytes->data(), bytes->size()))
        return true;
    bytes->clear();
    return false;
}

size_t ReadSurveyedStart(FilePages *pages, const SurveyedResource *resource, void *bytes,
                         size_t size)
{
    const size_t count = std::min<size_t>(size, resource->size);
    if (!resource->isInFile || !ReadPages(pages, resource->fileOffset, bytes, count))
        return 0;
    return count;
}
