#include "platform/native/comctl/tree.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "platform/native/comctl/notify.h"
#include "platform/native/no_memory.h"
#include "platform/native/user/classes.h"
#include "platform/native/user/control_font.h"
#include "platform/native/user/painting.h"
#include "platform/native/user/window_table.h"
#include "platform/native/visible.h"

// Slot 0 is the invisible root; a free slot has no parent and is not the root.
constexpr uint32_t rootSlot = 0;
constexpr uint32_t noSlot = 0xffffffff;

namespace
{

struct Item {
    std::string label;
    uint64_t key; // the label's first eight bytes, folded, as a big-endian number
    LPARAM value;
    int image;
    int selectedImage;
    uint32_t generation;
    uint32_t parent;
    uint32_t position; // in the parent's children, right while those are sorted
    uint32_t sorted;   // how many of the children are in order; later ones wait
    std::vector<uint32_t> children;
};

struct TreeState : ControlState {
    std::vector<Item> items;
    std::vector<uint32_t> freeSlots;
    HIMAGELIST images = nullptr;
    HTREEITEM selected = nullptr; // it may be dead
};

} // namespace

static HTREEITEM HandleOf(const TreeState *state, uint32_t slot)
{
    if (slot == rootSlot || slot == noSlot)
        return nullptr;
    const auto number = (static_cast<uintptr_t>(state->items[slot].generation) << 32) | slot;
    return reinterpret_cast<HTREEITEM>(number);
}

// The slot of a live item, or noSlot.
static uint32_t SlotOf(const TreeState *state, HTREEITEM item)
{
    const auto number = reinterpret_cast<uintptr_t>(item);
    const auto slot = static_cast<uint32_t>(number);
    if (slot == rootSlot || slot >= state->items.size() || state->items[slot].parent == noSlot ||
        state->items[slot].generation != number >> 32)
        return noSlot;
    return slot;
}

static uint32_t ParentSlotOf(const TreeState *state, HTREEITEM item)
{
    return !item || item == TVI_ROOT ? rootSlot : SlotOf(state, item);
}

static unsigned char Fold(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte + 'a' - 'A') : byte;
}

static uint64_t KeyOf(const std::string &label)
{
    uint64_t key = 0;
    for (size_t i = 0; i < 8; ++i)
        key = key << 8 | (i < label.size() ? Fold(label[i]) : 0u);
    return key;
}

// Whether a label sorts before another whose key is the same.
static bool RestIsLess(const std::string &a, const std::string &b)
{
    const size_t common = std::min(a.size(), b.size());
    for (size_t i = 8; i < common; ++i)
        if (Fold(a[i]) != Fold(b[i]))
            return Fold(a[i]) < Fold(b[i]);
    return a.size() < b.size();
}

// New children wait unsorted until someone looks, so that n insertions cost one sort.
static void SortChildren(TreeState *state, uint32_t parent)
{
    Item &owner = state->items[parent];
    if (owner.sorted == owner.children.size())
        return;
    struct Keyed {
        uint64_t key;
        uint32_t slot;
    };
    const auto isLess = [state](const Keyed &a, const Keyed &b) {
        if (a.key != b.key)
            return a.key < b.key;
        return RestIsLess(state->items[a.slot].label, state->items[b.slot].label);
    };
    const auto keyed = [state](uint32_t slot) { return Keyed{state->items[slot].key, slot}; };
    std::vector<Keyed> order;
    if (DoesMemorySuffice([&] { order.reserve(owner.children.size()); })) {
        for (uint32_t slot : owner.children)
            order.push_back(keyed(slot));
        std::stable_sort(order.begin(), order.end(), isLess);
        std::transform(order.begin(), order.end(), owner.children.begin(),
                       [](const Keyed &item) { return item.slot; });
    } else {
        // Keys that lie side by side only make it faster.
        std::stable_sort(owner.children.begin(), owner.children.end(),
                         [&](uint32_t a, uint32_t b) { return isLess(keyed(a), keyed(b)); });
    }
    owner.sorted = static_cast<uint32_t>(owner.children.size());
    for (uint32_t i = 0; i < owner.sorted; ++i)
        state->items[owner.children[i]].position = i;
}

// Sees to it that there is a free slot, and room for all slots to become free.
static void MakeFreeSlot(TreeState *state)
{
    if (!state->freeSlots.empty())
        return;
    const auto slot = static_cast<uint32_t>(state->items.size());
    state->items.emplace_back().parent = noSlot;
    state->freeSlots.reserve(state->items.capacity());
    state->freeSlots.push_back(slot);
}

static HTREEITEM InsertItem(TreeState *state, const TVINSERTSTRUCTA *insertion)
{
    const uint32_t parent = ParentSlotOf(state, insertion->hParent);
    if (parent == noSlot)
        return nullptr;
    const TVITEMA &given = insertion->item;
    // What needs memory comes before anything changes.
    std::string label = given.mask & TVIF_TEXT && given.pszText ? given.pszText : "";
    MakeFreeSlot(state);
    const uint32_t slot = state->freeSlots.back();
    state->items[parent].children.push_back(slot);
    state->freeSlots.pop_back();
    Item &item = state->items[slot];
    item.label = std::move(label);
    item.key = KeyOf(item.label);
    item.value = given.mask & TVIF_PARAM ? given.lParam : 0;
    item.image = given.mask & TVIF_IMAGE ? given.iImage : 0;
    item.selectedImage = given.mask & TVIF_SELECTEDIMAGE ? given.iSelectedImage : 0;
    item.generation = (item.generation + 1) & 0x7fffffff;
    item.parent = parent;
    return HandleOf(state, slot);
}

// The slots stay, each with the generation that makes its old handles dead.
static LRESULT DeleteAll(TreeState *state)
{
    state->freeSlots.clear();
    for (uint32_t slot = 0; slot < state->items.size(); ++slot) {
        Item &item = state->items[slot];
        std::vector<uint32_t>().swap(item.children);
        std::string().swap(item.label);
        item.sorted = 0;
        if (slot != rootSlot) {
            item.parent = noSlot;
            state->freeSlots.push_back(slot);
        }
    }
    return TRUE;
}

static uint32_t FirstChild(TreeState *state, uint32_t parent)
{
    if (parent == noSlot || state->items[parent].children.empty())
        return noSlot;
    SortChildren(state, parent);
    return state->items[parent].children[0];
}

static uint32_t NextSibling(TreeState *state, uint32_t slot)
{
    if (slot == noSlot)
        return noSlot;
    const uint32_t parent = state->items[slot].parent;
    SortChildren(state, parent);
    const uint32_t next = state->items[slot].position + 1;
    const auto &siblings = state->items[parent].children;
    return next < siblings.size() ? siblings[next] : noSlot;
}

static HTREEITEM NextItem(TreeState *state, WPARAM relation, HTREEITEM item)
{
    switch (relation) {
    case TVGN_ROOT: return HandleOf(state, FirstChild(state, rootSlot));
    case TVGN_CHILD: return HandleOf(state, FirstChild(state, ParentSlotOf(state, item)));
    case TVGN_NEXT: return HandleOf(state, NextSibling(state, SlotOf(state, item)));
    }
    return nullptr;
}

static LRESULT GetItem(const TreeState *state, TVITEMA *out)
{
    const uint32_t slot = SlotOf(state, out->hItem);
    if (slot == noSlot)
        return FALSE;
    const Item &item = state->items[slot];
    if (out->mask & TVIF_TEXT && out->cchTextMax > 0) {
        const size_t length = std::min(item.label.size(), static_cast<size_t>(out->cchTextMax) - 1);
        std::memcpy(out->pszText, item.label.data(), length);
        out->pszText[length] = 0;
    }
    if (out->mask & TVIF_PARAM)
        out->lParam = item.value;
    return TRUE;
}

static LRESULT SetImages(TreeState *state, HIMAGELIST images)
{
    return reinterpret_cast<LRESULT>(std::exchange(state->images, images));
}

static void MakeState(HWND tree)
{
    auto state = std::make_unique<TreeState>();
    state->items.emplace_back();
    WindowOf(tree)->state = std::move(state);
}

int CountTreeChildren(HWND tree, HTREEITEM parent)
{
    TreeState *state = StateOf<TreeState>(tree);
    const uint32_t slot = state ? ParentSlotOf(state, parent) : noSlot;
    return slot == noSlot ? 0 : static_cast<int>(state->items[slot].children.size());
}

HTREEITEM TreeChildAt(HWND tree, HTREEITEM parent, int position)
{
    if (position < 0 || position >= CountTreeChildren(tree, parent))
        return nullptr;
    TreeState *state = StateOf<TreeState>(tree);
    const uint32_t slot = ParentSlotOf(state, parent);
    SortChildren(state, slot);
    return HandleOf(state, state->items[slot].children[static_cast<size_t>(position)]);
}

HTREEITEM TreeParent(HWND tree, HTREEITEM item)
{
    TreeState *state = StateOf<TreeState>(tree);
    const uint32_t slot = state ? SlotOf(state, item) : noSlot;
    return slot == noSlot ? nullptr : HandleOf(state, state->items[slot].parent);
}

int TreePosition(HWND tree, HTREEITEM item)
{
    TreeState *state = StateOf<TreeState>(tree);
    const uint32_t slot = state ? SlotOf(state, item) : noSlot;
    if (slot == noSlot)
        return -1;
    SortChildren(state, state->items[slot].parent);
    return static_cast<int>(state->items[slot].position);
}

bool GetTreeItemLook(HWND tree, HTREEITEM item, TreeItemLook *look)
{
    const TreeState *state = StateOf<TreeState>(tree);
    const uint32_t slot = state ? SlotOf(state, item) : noSlot;
    if (slot == noSlot)
        return false;
    const Item &found = state->items[slot];
    *look = {&found.label, found.image, found.selectedImage};
    return true;
}

HIMAGELIST TreeImages(HWND tree)
{
    const TreeState *state = StateOf<TreeState>(tree);
    return state ? state->images : nullptr;
}

HTREEITEM TreeSelection(HWND tree)
{
    const TreeState *state = StateOf<TreeState>(tree);
    return state && SlotOf(state, state->selected) != noSlot ? state->selected : nullptr;
}

void SelectTreeItem(HWND tree, HTREEITEM item)
{
    if (TreeState *state = StateOf<TreeState>(tree))
        state->selected = item;
}

static LRESULT CALLBACK TreeProcedure(HWND tree, UINT message, WPARAM wParam, LPARAM lParam)
{
    TreeState *state = StateOf<TreeState>(tree);
    if (!state) {
        if (message == WM_CREATE)
            MakeState(tree);
        return DefWindowProcA(tree, message, wParam, lParam);
    }
    switch (message) {
    case TVM_INSERTITEMA:
        visible.treeChanged(tree);
        return reinterpret_cast<LRESULT>(
            InsertItem(state, reinterpret_cast<const TVINSERTSTRUCTA *>(lParam)));
    case TVM_DELETEITEM: visible.treeChanged(tree); return DeleteAll(state);
    case TVM_SETIMAGELIST:
        visible.treeChanged(tree);
        return SetImages(state, reinterpret_cast<HIMAGELIST>(lParam));
    case TVM_GETNEXTITEM:
        return reinterpret_cast<LRESULT>(
            NextItem(state, wParam, reinterpret_cast<HTREEITEM>(lParam)));
    case TVM_GETITEMA: return GetItem(state, reinterpret_cast<TVITEMA *>(lParam));
    case WM_PAINT: PaintElsewhere(tree); break;
    case WM_SETFONT: TakeFont(tree, wParam); break;
    case WM_SETFOCUS: NotifyParent(tree, NM_SETFOCUS); break;
    case WM_KILLFOCUS: NotifyParent(tree, NM_KILLFOCUS); break;
    case WM_RBUTTONDOWN: NotifyParent(tree, NM_RCLICK); break;
    default: return DefWindowProcA(tree, message, wParam, lParam);
    }
    return 0;
}

// Whoever has this library has the class.
[[maybe_unused]] static const bool registered = (AddSystemClass(WC_TREEVIEWA, TreeProcedure), true);
