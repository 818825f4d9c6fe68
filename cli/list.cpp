#include "cli/list.h"

#include "cli/reading.h"
#include "exe/catalog.h"
#include "exe/categories.h"
#include "exe/tree_items.h"
#include "platform/console.h"
#include "platform/utf8.h"

#include <CLI/CLI.hpp>
#include <new>
#include <nlohmann/json.hpp>

#define PART_SIZE 65536

CLI::App *AddListCommand(CLI::App &app, ListOptions *options)
{
    CLI::App *list =
        app.add_subcommand("list", "Print the tree of resources, as the window shows it");
    list->add_flag("--json", options->json, "Print one JSON object a line, in catalogue order");
    list->add_flag("--salvage", options->salvage, "Keep what could be read of a damaged file");
    list->add_option("FILE", options->files, "Executables or libraries")->required();
    return list;
}

// What is printed, handed on a part at a time.
struct Listing {
    FILE *out;
    std::string part;
    int failed; // nothing more is wanted
};

static void Flush(Listing *listing)
{
    if (!listing->failed && !listing->part.empty())
        listing->failed = !PrintText(listing->out, listing->part);
    listing->part.clear();
}

static void Append(Listing *listing, const std::string &text)
{
    listing->part += text;
    if (listing->part.size() >= PART_SIZE)
        Flush(listing);
}

static void AppendItems(Listing *listing, HWND tree, HTREEITEM first, size_t level)
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
        Append(listing, std::string(level * 2, ' ') + SafeText(TextToUtf8(get.pszText)) + '\n');
        HTREEITEM child = (HTREEITEM)SendMessageA(tree, TVM_GETNEXTITEM, TVGN_CHILD, (LPARAM)item);
        AppendItems(listing, tree, child, level + 1);
    }
}

static void AppendTree(Listing *listing, const std::string &heading, HWND tree)
{
    Append(listing, heading);
    AppendItems(listing, tree, (HTREEITEM)SendMessageA(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0), 0);
}

// JSON text with the letters that steer text escaped; other letters stay as they are.
static std::string EscapeSteering(const std::string &json)
{
    std::string escaped;
    for (size_t at = 0; at < json.size();) {
        const Utf8Letter letter = LetterAt(json, at);
        if (SteersText(letter.code)) {
            char code[8];
            snprintf(code, sizeof code, "\\u%04x", (unsigned)letter.code & 0xFFFF);
            escaped += code;
        } else {
            escaped.append(json, at, letter.length);
        }
        at += letter.length;
    }
    return escaped;
}

static std::string Quoted(const std::string &text)
{
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

// The library's objects allocate while they are destroyed, and end the program where that fails;
// its texts do not.
static void AppendObjects(Listing *listing, const std::string &path, int withFile)
{
    ResourceEntry entry;
    for (LONG index = 0; index < openCatalog.count && !listing->failed; index++) {
        if (!GetEntry(openCatalog.entries, &entry, index))
            continue;
        std::string object = "{\"index\":" + std::to_string(index);
        object += ",\"category\":" + std::to_string(entry.category);
        object += ",\"label\":" + Quoted(CategoryLabel(entry.category));
        object += ",\"name\":" + Quoted(TextToUtf8(entry.name));
        object += ",\"size\":" + std::to_string(entry.size);
        object += ",\"fileOffset\":" + std::to_string(entry.fileOffset);
        object += entry.isWave ? ",\"isWave\":true" : ",\"isWave\":false";
        if (withFile)
            object += ",\"file\":" + Quoted(path);
        Append(listing, EscapeSteering(object) + "}\n");
    }
}

// The window class of trees is met by its name alone: the list needs items, not a picture of them.
static HWND CreateHiddenTree()
{
    return CreateWindowExA(0, WC_TREEVIEWA, "", WS_CHILD, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                           nullptr, nullptr);
}

static ExitStatus ListFiles(const ListOptions &options, HWND tree, FILE *out, FILE *err)
{
    ExitStatus status = ExitDone;
    const int several = options.files.size() > 1;
    Listing listing = {out, "", 0};
    for (const std::string &path : options.files) {
        if (!ReadExecutable(path, tree, options.salvage, err)) {
            status = ExitFailed;
            continue;
        }
        if (options.json)
            AppendObjects(&listing, path, several);
        else
            AppendTree(&listing, several ? SafeText(path) + "\n" : "", tree);
        Flush(&listing);
        ReleaseCatalog(&openCatalog);
        if (listing.failed) {
            if (!OutputIsClosed())
                PrintText(err, "quillmoor-cli: The list cannot be written.\n");
            status = ExitFailed;
            break;
        }
    }
    return status;
}

ExitStatus RunList(const ListOptions &options, FILE *out, FILE *err)
{
    ExitStatus status = ExitFailed;
    HWND tree = options.json ? nullptr : CreateHiddenTree();
    if (tree == nullptr && !options.json) {
        PrintNoMemory(err);
        return status;
    }
    try {
        status = ListFiles(options, tree, out, err);
    } catch (const std::bad_alloc &) {
        PrintNoMemory(err);
    }
    ReleaseCatalog(&openCatalog);
    if (tree != nullptr)
        DestroyWindow(tree);
    return status;
}
