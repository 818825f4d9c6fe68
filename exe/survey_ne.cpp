#include "exe/catalog.h"
#include "exe/ne_table.h"
#include "exe/refusal.h"
#include "exe/survey_readers.h"
#include "platform/page_text.h"

#include <algorithm>

struct NeSurvey {
    Survey *survey;
    UINT codePage;
    const SurveyChoice *choice;
    SurveyId type;          // that is walked
    uint64_t nameBytesLeft; // names may be shared, so that a file holds more of them than bytes
    bool failed;
};

static SurveyId ReadId(const NeTableWalk *walk, UINT codePage, WORD id)
{
    if (id & NE_INTEGER_ID)
        return {false, (DWORD)(id & ~NE_INTEGER_ID), ""};
    char name[NE_NAME_LENGTH + 1];
    const size_t length = ReadNeName(walk, id, name);
    return {true, 0, PageTextToUtf8(codePage, name, length)};
}

static bool TakeType(NeTableWalk *walk, WORD type)
{
    NeSurvey *reading = (NeSurvey *)walk->taker;
    reading->type = ReadId(walk, reading->codePage, type);
    return true;
}

static bool TakeResource(NeTableWalk *walk, WORD, const NeRecord *record)
{
    NeSurvey *reading = (NeSurvey *)walk->taker;
    const uint64_t offset = (uint64_t)record->offset << walk->shift;
    const uint64_t size = (uint64_t)record->length << walk->shift;
    SurveyedResource resource = {};
    if (!ChoosesType(reading->choice, reading->type.isText, reading->type.number) ||
        !ChoosesName(reading->choice, !(record->id & NE_INTEGER_ID), record->id & ~NE_INTEGER_ID))
        return true;
    resource.type = reading->type;
    resource.name = ReadId(walk, reading->codePage, record->id);
    const uint64_t nameBytes = NameBytesOf(&resource);
    if (nameBytes > reading->nameBytesLeft) {
        NoteFailure(FailureNames);
        return false;
    }
    reading->nameBytesLeft -= nameBytes;
    resource.flags = record->flags;
    resource.size = (DWORD)std::min<uint64_t>(size, UINT32_MAX);
    // Of what has no length nothing is read, wherever it points.
    resource.isInFile = size == 0 || LiesInFile(walk->pages, offset, size);
    if (resource.isInFile) {
        resource.fileOffset = offset;
    } else {
        NoteFailure(FailureData, offset);
        reading->failed = true;
    }
    reading->survey->resources.push_back(resource);
    return true;
}

bool SurveyNeResources(FilePages *pages, UINT codePage, const SurveyChoice *choice, Survey *survey)
{
    NeSurvey reading = {};
    reading.survey = survey;
    reading.codePage = codePage;
    reading.choice = choice;
    reading.nameBytesLeft = KeptBytesLimit(pages->length);
    NeTableWalk walk = {};
    walk.pages = pages;
    walk.takeType = TakeType;
    walk.takeResource = TakeResource;
    walk.taker = &reading;
    return WalkNeTable(&walk, survey->kind.headerOffset) && !reading.failed;
}
