#include "exe/catalog.h"
#include "exe/pe_directories.h"
#include "exe/pe_image.h"
#include "exe/survey_readers.h"
#include "platform/byte_reader.h"
#include "platform/page_text.h"

struct PeSurvey {
    FilePages *pages;
    PeImage image;
    const SurveyChoice *choice;
    Survey *survey;
    SurveyedResource next;   // what the directories on the way told so far
    int depthLeftOut;        // level of the directory below which nothing is taken; 0 for none
    uint64_t nameBytesLeft;  // names may be shared, so that a file holds more of them than bytes
    const PeSection *byName; // the section that was found by its name, when no directory told it
};

static bool ReadSurvey(void *source, uint64_t offset, void *bytes, size_t size)
{
    return ReadPages((FilePages *)source, offset, bytes, size);
}

static bool IsWanted(const PeDirectoryWalk *walk, int level, DWORD nameField)
{
    const SurveyChoice *choice = ((const PeSurvey *)walk->taker)->choice;
    const bool isText = (nameField & PE_HIGH_BIT) != 0;
    if (level == 0)
        return ChoosesType(choice, isText, nameField);
    return level > 1 || ChoosesName(choice, isText, nameField);
}

// Reads the type or name that a name field gives. Returns false, with the failure noted, when it
// does not lie in the file.
static bool ReadId(PeDirectoryWalk *walk, DWORD nameField, SurveyId *id)
{
    PeSurvey *reading = (PeSurvey *)walk->taker;
    *id = {false, nameField, ""};
    if (!(nameField & PE_HIGH_BIT))
        return true;
    const uint64_t offset = walk->root + (nameField & ~PE_HIGH_BIT);
    BYTE length[2];
    if (!ReadPages(reading->pages, offset, length, sizeof length)) {
        FailPeWalk(walk, FailureName, offset);
        return false;
    }
    std::vector<BYTE> units((size_t)(length[0] | length[1] << 8) * 2);
    if (units.size() > reading->nameBytesLeft) {
        StopPeWalk(walk, FailureNames);
        return false;
    }
    reading->nameBytesLeft -= units.size();
    if (!ReadPages(reading->pages, offset + sizeof length, units.data(), units.size())) {
        FailPeWalk(walk, FailureName, offset);
        return false;
    }
    *id = {1, 0, UnitsToUtf8(units.data(), units.size() / 2)};
    return true;
}

// Takes what an entry of a directory at a level tells. Returns false when it cannot be read.
static bool TakeStep(PeDirectoryWalk *walk, int level, DWORD nameField)
{
    SurveyedResource *next = &((PeSurvey *)walk->taker)->next;
    if (level == 0) {
        next->name = {};
        next->language = 0;
        return ReadId(walk, nameField, &next->type);
    }
    if (level == 1) {
        next->language = 0;
        return ReadId(walk, nameField, &next->name);
    }
    if (level == 2)
        next->language = nameField & PE_HIGH_BIT ? (WORD)0 : (WORD)nameField;
    return true;
}

static void TakeDirectory(PeDirectoryWalk *walk, const PeDirectory *directory)
{
    PeSurvey *reading = (PeSurvey *)walk->taker;
    if (reading->depthLeftOut > 0 && directory->level > reading->depthLeftOut)
        return;
    reading->depthLeftOut = 0;
    if (directory->level > 0 && !TakeStep(walk, directory->level - 1, directory->nameField))
        reading->depthLeftOut = directory->level;
}

// Finds where a resource's bytes lie.
static void PlaceData(PeDirectoryWalk *walk, DWORD address, uint64_t dataEntry)
{
    PeSurvey *reading = (PeSurvey *)walk->taker;
    SurveyedResource *next = &reading->next;
    uint64_t offset = 0;
    next->fileOffset = 0;
    next->isInFile = next->size == 0;
    PePlace place = FindPePlace(&reading->image, address, next->size, &offset);
    if (place == PlaceNowhere && reading->byName != nullptr) {
        offset = (uint64_t)reading->byName->fileOffset + (address - reading->byName->address);
        place = PlaceStored;
    }
    // Of what has no length nothing is read, wherever it points.
    if (next->size == 0) {
        next->fileOffset = place == PlaceStored ? offset : 0;
    } else if (place == PlaceNowhere) {
        FailPeWalk(walk, FailureDataAddress, dataEntry);
    } else if (place == PlaceStored && !LiesInFile(reading->pages, offset, next->size)) {
        FailPeWalk(walk, FailureData, offset);
    } else if (place == PlaceStored) {
        next->fileOffset = offset;
        next->isInFile = true;
    }
}

static void TakeData(PeDirectoryWalk *walk, const PeDirectory *directory, DWORD nameField,
                     uint64_t dataEntry)
{
    PeSurvey *reading = (PeSurvey *)walk->taker;
    if (reading->depthLeftOut > 0 && directory->level >= reading->depthLeftOut)
        return;
    if (!TakeStep(walk, directory->level, nameField))
        return;
    BYTE record[PE_DATA_ENTRY_SIZE];
    if (!ReadPages(reading->pages, dataEntry, record, sizeof record)) {
        FailPeWalk(walk, FailureDataEntry, dataEntry);
        return;
    }
    ByteReader reader = OpenBytes(record, sizeof record);
    const DWORD address = TakeU32(&reader);
    reading->next.size = TakeU32(&reader);
    reading->next.codePage = TakeU32(&reader);
    const uint64_t nameBytes = NameBytesOf(&reading->next);
    if (nameBytes > reading->nameBytesLeft) {
        StopPeWalk(walk, FailureNames);
        return;
    }
    reading->nameBytesLeft -= nameBytes;
    PlaceData(walk, address, dataEntry);
    reading->survey->resources.push_back(reading->next);
}

// Finds the root directory. Returns false when there is none, and then *result is the reading's.
static bool FindRoot(PeSurvey *reading, uint64_t *root, bool *result)
{
    const PeImage *image = &reading->image;
    if (image->resources != 0 &&
        FindPePlace(image, image->resources, PE_DIRECTORY_SIZE, root) == PlaceStored)
        return true;
    reading->byName = FindPeSection(image, ".rsrc");
    if (reading->byName != nullptr) {
        *root = reading->byName->fileOffset;
        return true;
    }
    *result = image->resources == 0;
    if (image->resources != 0)
        NoteFailure(FailureRootAddress, image->resources);
    return false;
}

bool SurveyPeResources(FilePages *pages, const SurveyChoice *choice, Survey *survey)
{
    PeSurvey reading = {};
    bool result;
    PeDirectoryWalk walk = {};
    reading.pages = pages;
    reading.choice = choice;
    reading.survey = survey;
    reading.nameBytesLeft = KeptBytesLimit(pages->length);
    if (!ReadPeImage(pages, survey->kind.headerOffset, &reading.image)) {
        NoteFailure(FailureHeaders, survey->kind.headerOffset);
        return false;
    }
    if (!FindRoot(&reading, &walk.root, &result))
        return result;
    walk.read = ReadSurvey;
    walk.source = pages;
    walk.isWanted = choice != nullptr ? IsWanted : nullptr;
    walk.takeDirectory = TakeDirectory;
    walk.takeData = TakeData;
    walk.taker = &reading;
    return WalkPeDirectories(&walk, pages->length);
}
