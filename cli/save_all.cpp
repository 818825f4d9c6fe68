#include "cli/save_all.h"

#include "cli/reading.h"
#include "cli/save_form.h"
#include "exe/catalog.h"
#include "exe/language_tags.h"
#include "exe/type_names.h"

#include <algorithm>
#include <set>

#define TYPE_NAMES_END 256 // past the numbers that have names

static bool IsBefore(const SurveyId &a, const SurveyId &b)
{
    if (a.isText != b.isText)
        return b.isText;
    return a.isText ? a.text < b.text : a.number < b.number;
}

struct IdLess {
    bool operator()(const SurveyId *a, const SurveyId *b) const
    {
        return IsBefore(*a, *b);
    }
};

// What is told of a file at its end.
struct AllNotes {
    size_t absent;     // resources that are not in the file
    size_t missing;    // pictures that groups name and the file lacks
    size_t damaged;    // string tables
    size_t unreadable; // resources
    size_t leftOver;   // resources past the bound
};

struct AllRun {
    const AllSaving *saving;
    FormSource source;
    PictureIndex pictures;
    std::set<const SurveyedResource *> inGroups; // whose groups' files are made
    NamesInFolder typeNames;                     // of the types' folders
    unsigned long long left;                     // bytes that may still be written
    AllNotes notes;
};

// The resources of one type.
struct TypeRun {
    std::string label;
    std::map<const SurveyId *, WORD, IdLess> firstLanguages; // by name
};

static bool IsGroup(const SurveyedResource *resource)
{
    return IsIconGroup(resource) || IsCursorGroup(resource);
}

// The resources type by type, groups of pictures first, else in the order of numbers and texts; of
// one type in the order of the file.
static std::vector<const SurveyedResource *> SortByType(const Survey *survey)
{
    std::vector<const SurveyedResource *> sorted;
    sorted.reserve(survey->resources.size());
    for (const SurveyedResource &resource : survey->resources)
        sorted.push_back(&resource);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const SurveyedResource *a, const SurveyedResource *b) {
                         if (IsGroup(a) != IsGroup(b))
                             return IsGroup(a) > IsGroup(b);
                         return IsBefore(a->type, b->type);
                     });
    return sorted;
}

static bool IsNumber(const std::string &text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

static bool IsTypeName(const std::string &text)
{
    const std::string folded = FoldName(text);
    for (DWORD type = 0; type < TYPE_NAMES_END; type++) {
        const char *name = StandardTypeName(type);
        if (name != nullptr && FoldName(name) == folded)
            return true;
    }
    return false;
}

// The names keep texts apart from the numbers that they look like.

static std::string TypeFolderName(const SurveyId &type)
{
    if (type.isText)
        return IsNumber(type.text) || IsTypeName(type.text) ? EncodeMarked(type.text)
                                                            : EncodeAnyName(type.text);
    const char *name = StandardTypeName(type.number);
    return name == nullptr ? std::to_string(type.number) : name;
}

static std::string FileNameOf(const SurveyId &name)
{
    if (name.isText)
        return IsNumber(name.text) ? EncodeMarked(name.text) : EncodeAnyName(name.text);
    return std::to_string(name.number);
}

static std::string LanguageSuffix(WORD language)
{
    const char *tag = LanguageTag(language);
    return '.' + (language == 0 ? "neutral" : tag != nullptr ? tag : std::to_string(language));
}

static void BeginType(AllRun *run, const SurveyId &type, TypeRun *typeRun)
{
    typeRun->firstLanguages.clear();
    typeRun->label = NextFileName(&run->typeNames, TypeFolderName(type), "");
}

// Takes the bytes of a resource from those that may be written. Returns false when there are too
// few.
static bool TakeBytes(AllRun *run, unsigned long long size)
{
    if (size > run->left) {
        run->notes.leftOver++;
        return false;
    }
    run->left -= size;
    return true;
}

static void SaveResource(AllRun *run, const TypeRun *typeRun, const SurveyedResource *resource,
                         const std::string &suffix)
{
    SaveForm form;
    // Its own bytes before they are read, whatever is made of them.
    if (!TakeBytes(run, resource->size))
        return;
    run->source.pages->isUnreadable = false;
    ChooseSaveForm(&run->source, resource, &form);
    if (run->source.pages->isUnreadable) {
        run->notes.unreadable++;
        return;
    }
    const uint64_t size = SaveFormSize(resource, &form);
    if (size > resource->size && !TakeBytes(run, size - resource->size))
        return;
    for (const GroupMember &member : form.members)
        run->inGroups.insert(member.picture);
    run->notes.missing += form.missing;
    run->notes.damaged += form.isDamaged ? 1 : 0;
    SaveFile(
        run->saving->folder, typeRun->label, FileNameOf(resource->name), suffix + form.extension,
        [&](FILE *stream) { return WriteSaveForm(stream, run->source.pages, resource, &form); });
}

static void TakeResource(AllRun *run, TypeRun *typeRun, const SurveyedResource *resource)
{
    const SurveyId &name = resource->name;
    const WORD first = typeRun->firstLanguages.try_emplace(&name, resource->language).first->second;
    if (!run->saving->isWanted(name.isText ? name.text : std::to_string(name.number)) ||
        run->inGroups.contains(resource))
        return;
    if (!resource->isInFile) {
        run->notes.absent++;
        return;
    }
    SaveResource(run, typeRun, resource,
                 resource->language == first ? "" : LanguageSuffix(resource->language));
}

static void TellCountOf(const AllRun *run, const char *what, size_t count)
{
    if (count > 0)
        PrintFault(run->saving->folder->err, run->saving->folder->source,
                   what + std::to_string(count) + ".");
}

static void TellNotes(const AllRun *run)
{
    const AllNotes &notes = run->notes;
    TellCountOf(run, "Resources that are not in the file: ", notes.absent);
    TellCountOf(run, "Pictures of icons and cursors that are not in the file: ", notes.missing);
    TellCountOf(run, "String tables that are damaged, and saved as they are: ", notes.damaged);
    if (notes.unreadable > 0)
        FaultOf(run->saving->folder, run->saving->folder->source,
                "Resources that cannot be read: " + std::to_string(notes.unreadable) + ".");
    if (notes.leftOver > 0)
        FaultOf(run->saving->folder, run->saving->folder->source,
                "The resources together are longer than the " +
                    std::to_string(KeptBytesLimit(run->source.pages->length)) +
                    " bytes that are saved of a file of this size; not saved: " +
                    std::to_string(notes.leftOver) + ".");
}

static void SaveTypes(AllRun *run)
{
    SaveFolder *folder = run->saving->folder;
    const SurveyedResource *before = nullptr;
    TypeRun typeRun;
    size_t done = 0;
    for (const SurveyedResource *resource : SortByType(run->saving->survey)) {
        if (!run->saving->goOn(done++) || folder->isDiskFull || folder->isUnusable)
            break;
        if (before == nullptr || IsBefore(before->type, resource->type) ||
            IsBefore(resource->type, before->type)) {
            FinishLabel(folder, typeRun.label);
            BeginType(run, resource->type, &typeRun);
        }
        before = resource;
        TakeResource(run, &typeRun, resource);
    }
}

void SaveEverything(const AllSaving *saving)
{
    AllRun run = {};
    run.saving = saving;
    run.left = KeptBytesLimit(saving->pages->length);
    IndexPictures(saving->survey, &run.pictures);
    run.source = {saving->pages, saving->survey, &run.pictures, saving->codePage};
    SaveTypes(&run);
    TellNotes(&run);
}
