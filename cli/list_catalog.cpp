#include "cli/list_catalog.h"

#include "cli/reading.h"
#include "content/picture_info.h"
#include "exe/catalog.h"
#include "exe/picture_groups.h"
#include "exe/tree_items.h"
#include "exe/type_names.h"
#include "platform/console.h"

#include <algorithm>

static void AppendItems(Listing *listing, HWND tree, UINT codePage, HTREEITEM first, size_t level)
{
    for (HTREEITEM item = first; item != nullptr && !listing->failed;
         item = (HTREEITEM)SendMessageA(tree, TVM_GETNEXTITEM, TVGN_NEXT, (LPARAM)item)) {
        char label[LABEL_SIZE];
        TVITEMA get = {};
        get.mask = TVIF_TEXT;
        get.hItem = item;
        get.pszText = label;
        get.cchTextMax = sizeof label;
        if (!SendMessageA(tree, TVM_GETITEM, 0, (LPARAM)&get))
            continue;
        AppendText(listing, std::string(level * 2, ' ') +
                                SafeText(TextToUtf8(get.pszText, codePage)) + '\n');
        HTREEITEM child = (HTREEITEM)SendMessageA(tree, TVM_GETNEXTITEM, TVGN_CHILD, (LPARAM)item);
        AppendItems(listing, tree, codePage, child, level + 1);
    }
}

void AppendTree(Listing *listing, HWND tree, UINT codePage)
{
    AppendItems(listing, tree, codePage,
                (HTREEITEM)SendMessageA(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0), 0);
}

// The groups of the icons, by an icon's place and its name in the catalogue.
typedef std::map<std::pair<uint64_t, std::string>, SurveyId> IconGroups;

static IconGroups FindIconGroups(FILE *file, UINT codePage)
{
    FilePages pages;
    Survey survey;
    PictureGroups groups;
    IconGroups found;
    ResourceEntry entry;
    bool hasIcons = false;
    for (LONG index = 0; index < openCatalog.count && !hasIcons; index++)
        hasIcons = GetEntry(openCatalog.entries, &entry, index) && entry.category == CategoryIcon;
    if (!hasIcons)
        return found;
    OpenPages(&pages, file);
    SurveyFile(&pages, codePage, &survey); // of a damaged file, what there is
    ReadPictureGroups(&pages, &survey, &groups);
    for (const SurveyedResource &resource : survey.resources) {
        if (resource.type.isText || resource.type.number != TYPE_ICON)
            continue;
        const SurveyedResource *group = FindPictureGroup(&groups, &resource);
        if (group != nullptr)
            found[{resource.fileOffset, std::to_string(resource.name.number)}] = group->name;
    }
    return found;
}

static void AddPicture(JsonObject *object, const ResourceEntry &entry)
{
    PictureInfo info;
    const BYTE *data = (const BYTE *)GlobalLock(entry.data);
    const bool isKnown =
        data != nullptr &&
        ReadPictureInfo(data, std::min<size_t>(entry.size, PICTURE_START_SIZE),
                        entry.category == CategoryIcon ? PictureIcon : PictureBitmap, &info);
    if (data != nullptr)
        GlobalUnlock(entry.data);
    AddPictureFields(object, isKnown ? &info : nullptr);
}

void AppendCatalog(Listing *listing, const std::string &path, FILE *file, UINT codePage)
{
    const IconGroups groups = FindIconGroups(file, codePage);
    ResourceEntry entry;
    for (LONG index = 0; index < openCatalog.count && !listing->failed; index++) {
        if (!GetEntry(openCatalog.entries, &entry, index))
            continue;
        JsonObject object;
        AddTextField(&object, "file", path);
        AddNumberField(&object, "index", (DWORD)index);
        AddNumberField(&object, "category", entry.category);
        AddTextField(&object, "label", CategoryLabel(entry.category));
        AddTextField(&object, "name", TextToUtf8(entry.name, codePage));
        AddNumberField(&object, "size", entry.size);
        AddNumberField(&object, "fileOffset", entry.fileOffset);
        AddField(&object, "isWave", entry.isWave ? "true" : "false");
        if (entry.category == CategoryBitmap || entry.category == CategoryIcon)
            AddPicture(&object, entry);
        if (entry.category == CategoryIcon) {
            const auto group = groups.find({entry.fileOffset, entry.name});
            if (group == groups.end())
                AddField(&object, "group", "null");
            else
                AddIdField(&object, "group", group->second);
        }
        AppendObject(listing, object);
    }
}
