#include "cli/list.h"

#include "cli/reading.h"
#include "exe/catalog.h"
#include "exe/categories.h"
#include "exe/tree_items.h"
#include "platform/console.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

CLI::App *AddListCommand(CLI::App &app, ListOptions *options)
{
    CLI::App *list =
        app.add_subcommand("list", "Print the tree of resources, as the window shows it");
    list->add_flag("--json", options->json, "Print one JSON object a line, in catalogue order");
    list->add_flag("--salvage", options->salvage, "Keep what could be read of a damaged file");
    list->add_option("FILE", options->files, "Executables or libraries")->required();
    return list;
}

static void AppendItems(std::string &text, HWND tree, HTREEITEM first, FILE *out, size_t level)
{
    for (HTREEITEM item = first; item != nullptr;
         item = (HTREEITEM)SendMessageA(tree, TVM_GETNEXTITEM, TVGN_NEXT, (LPARAM)item)) {
        char label[LABEL_SIZE];
        TVITEMA get = {};
        get.mask = TVIF_TEXT;
        get.hItem = item;
        get.pszText = label;
        get.cchTextMax = sizeof label;
        if (!SendMessageA(tree, TVM_GETITEM, 0, (LPARAM)&get))
            continue;
        text.append(level * 2, ' ');
        text += SafeText(out, TextToUtf8(get.pszText));
        text += '\n';
        HTREEITEM child = (HTREEITEM)SendMessageA(tree, TVM_GETNEXTITEM, TVGN_CHILD, (LPARAM)item);
        AppendItems(text, tree, child, out, level + 1);
    }
}

static std::string TreeText(HWND tree, FILE *out)
{
    std::string text;
    HTREEITEM root = (HTREEITEM)SendMessageA(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0);
    AppendItems(text, tree, root, out, 0);
    return text;
}

static std::string JsonText(const std::string &path, int withFile)
{
    std::string text;
    ResourceEntry entry;
    for (LONG index = 0; index < openCatalog.count; index++) {
        if (!GetEntry(openCatalog.entries, &entry, index))
            continue;
        nlohmann::ordered_json object;
        object["index"] = index;
        object["category"] = entry.category;
        object["label"] = CategoryLabel(entry.category);
        object["name"] = TextToUtf8(entry.name);
        object["size"] = entry.size;
        object["fileOffset"] = entry.fileOffset;
        object["isWave"] = entry.isWave != 0;
        if (withFile)
            object["file"] = path;
        text += object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
        text += '\n';
    }
    return text;
}

// The window class of trees is met by its name alone: the list needs items, not a picture of them.
static HWND CreateHiddenTree()
{
    return CreateWindowExA(0, WC_TREEVIEWA, "", WS_CHILD, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                           nullptr, nullptr);
}

ExitStatus RunList(const ListOptions &options, FILE *out, FILE *err)
{
    ExitStatus status = ExitDone;
    const int several = options.files.size() > 1;
    HWND tree = options.json ? nullptr : CreateHiddenTree();
    std::string text;
    for (const std::string &path : options.files) {
        if (!ReadExecutable(path, tree, options.salvage, err)) {
            status = ExitFailed;
            continue;
        }
        if (options.json)
            text = JsonText(path, several);
        else
            text = (several ? SafeText(out, path) + "\n" : "") + TreeText(tree, out);
        ReleaseCatalog(&openCatalog);
        if (!PrintText(out, text)) {
            if (!OutputIsClosed())
                PrintText(err, "quillmoor-cli: The list cannot be written.\n");
            status = ExitFailed;
            break;
        }
    }
    if (tree != nullptr)
        DestroyWindow(tree);
    return status;
}
