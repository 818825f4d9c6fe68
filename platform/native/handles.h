// The layer's tables of handles. A handle is a number: the kind of its table, the generation of its
// slot, and the slot's index. When an object goes, its slot's generation moves on, so an old handle
// is found nowhere and never means a later object. A handle is never nullptr.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <utility>
#include <vector>

// One for each table. 0 and 0xFF stay free: small numbers pass as resource ids, and Windows has
// handles of its own near the top (HWND_MESSAGE, TVI_ROOT).
enum class HandleKind : uint8_t {
    Memory = 1,
    Module,
    Resource,
    Graphics,
    DeviceContext,
    Window,
    Menu,
    ImageList,
    Icon,
};

static_assert(sizeof(void *) == 8, "a handle needs 64 bits");

// A table of objects. An object keeps its address while it lives; adding and finding cost the same
// however many there are. Not for use by two threads at once.
template <typename Object, HandleKind kind> class HandleTable
{
  public:
    // Makes an object of the arguments, which the table owns from then on. Returns its handle, or
    // nullptr when the table is full or there is no memory for its slots.
    template <typename... Arguments> void *Add(Arguments &&...arguments)
    {
        const size_t index = TakeSlot();
        if (index == none)
            return nullptr;
        Slot &slot = At(index);
        slot.object.emplace(std::forward<Arguments>(arguments)...);
        const uint64_t number = static_cast<uint64_t>(kind) << (indexBits + generationBits) |
                                static_cast<uint64_t>(slot.generation) << indexBits | index;
        return reinterpret_cast<void *>(number);
    }

    // The object of a handle, good until it is removed; nullptr for a handle that is dead or of
    // another table.
    Object *Find(const void *handle)
    {
        const size_t index = Index(handle);
        return index == none ? nullptr : &*At(index).object;
    }

    // Ends an object. Returns false for a handle that is dead or of another table.
    bool Remove(const void *handle)
    {
        const size_t index = Index(handle);
        if (index == none)
            return false;
        Slot &slot = At(index);
        // The object is taken out first: its end may add to this table or remove from it.
        [[maybe_unused]] const std::optional<Object> ending = std::move(slot.object);
        slot.object.reset();
        ++slot.generation;
        // A slot whose generations are used up is never given again.
        if (slot.generation >> generationBits == 0)
            slot.nextFree = std::exchange(firstFree, static_cast<uint32_t>(index));
        return true;
    }

  private:
    static constexpr unsigned indexBits = 28;
    static constexpr unsigned generationBits = 28;
    static constexpr size_t chunkSize = 256;
    static constexpr size_t none = SIZE_MAX;

    static constexpr uint32_t noFree = UINT32_MAX;

    struct Slot {
        uint32_t generation = 0;
        uint32_t nextFree = noFree; // of a free slot
        std::optional<Object> object;
    };

    // The index of a slot without an object; none when the table is full or there is no memory.
    size_t TakeSlot()
    {
        if (firstFree != noFree)
            return std::exchange(firstFree, At(firstFree).nextFree);
        if (used >> indexBits != 0 || (used % chunkSize == 0 && !AddChunk()))
            return none;
        return used++;
    }

    bool AddChunk()
    {
        try {
            chunks.push_back(std::make_unique<Slot[]>(chunkSize));
            return true;
        } catch (const std::bad_alloc &) {
            return false;
        }
    }

    Slot &At(size_t index)
    {
        return chunks[index / chunkSize][index % chunkSize];
    }

    size_t Index(const void *handle)
    {
        const uint64_t number = reinterpret_cast<uint64_t>(handle);
        const size_t index = number & ((1ull << indexBits) - 1);
        if (number >> (indexBits + generationBits) != static_cast<uint64_t>(kind) || index >= used)
            return none;
        const Slot &slot = At(index);
        const uint32_t generation = number >> indexBits & ((1u << generationBits) - 1);
        return slot.object.has_value() && slot.generation == generation ? index : none;
    }

    std::vector<std::unique_ptr<Slot[]>> chunks;
    uint32_t firstFree = noFree; // of the slots below `used` that are free, the last one freed
    size_t used = 0;
};
