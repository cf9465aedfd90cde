#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "component/host/sv_string.h"

#include "component/results/position_index.h"

/// What lives in a place of a `MeroPlaceTable`: from its `begin`, which takes the key first, to its `clear`.
template <class Item>
concept MeroPlaced = requires(Item& item, const Item& known) {
    { known.getKey() } -> std::same_as<const SV::String&>;
    { known.isAlive() } -> std::same_as<bool>;
    item.clear();
};

/// Whether the keys of a table remember the place where they were found last. A key can do so for one table:
/// of two that have the same keys at the same time, the one that is asked less often does without.
enum class MeroPlaceMemory { InKeys, None };

/// Items that live for a time, by key. Each lies in a place that another one takes when it has ended, since a
/// run has many more than are alive at a time. Pointers hold until the item is erased.
///
/// A key remembers the place where it was found last, so that nothing but the key and the item is looked at:
/// of many, neither the index nor anything else is in the processor's cache.
template <MeroPlaced Item, MeroPlaceMemory Memory = MeroPlaceMemory::InKeys>
class MeroPlaceTable {
public:
    /// Number of a place.
    using Place = std::uint32_t;

    [[nodiscard]] std::size_t size() const { return used - freePositions.size(); }
    [[nodiscard]] bool empty() const { return size() == 0; }

    /// Null if it isn't alive.
    [[nodiscard]] Item* find(const SV::String& key) const {
        const std::size_t position = positionOf(key);
        return position != Missing ? &itemAt(position) : nullptr;
    }

    /// Place of a key that is alive.
    [[nodiscard]] Place placeOf(const SV::String& key) const { return static_cast<Place>(positionOf(key)); }
    /// What lies in a place, alive or not; null if there is no such place.
    [[nodiscard]] Item* at(Place place) const { return place < used ? &itemAt(place) : nullptr; }

    /// Begins an item with the key and `rest`. Null if the key is there already.
    template <class... Rest>
    Item* add(const SV::String& key, const Rest&... rest) {
        if (positionByHash(key) != Missing) {
            return nullptr;
        }
        const std::size_t position = takePlace();
        Item& item = itemAt(position);
        item.begin(key, rest...);
        index.add(key.hash(), position);
        remember(key, position);
        return &item;
    }

    /// True if the key was there.
    bool erase(const SV::String& key) {
        const std::size_t position = positionOf(key);
        if (position == Missing) {
            return false;
        }
        index.erase(key.hash(), position);
        itemAt(position).clear();
        freePositions.push_back(static_cast<std::uint32_t>(position));
        return true;
    }

    /// Frees the memory, too.
    void clear() { *this = {}; }

    /// All that are alive.
    [[nodiscard]] std::vector<Item*> inOrderOfKeys() const {
        std::vector<Item*> items;
        items.reserve(size());
        for (std::size_t position = 0; position < used; ++position) {
            if (Item& item = itemAt(position); item.isAlive()) {
                items.push_back(&item);
            }
        }
        std::ranges::sort(items, {}, [](const Item* item) -> const SV::String& { return item->getKey(); });
        return items;
    }

    /// Asks for the memory of the item, or its head, if the key tells where that is. Gives its place, which
    /// may have another item or none, or no place.
    Place prefetch(const SV::String& key) const requires(Memory == MeroPlaceMemory::InKeys) {
        const Place place = key.lookupHint();
        if (const Item* const item = at(place)) {
            const auto* const memory = reinterpret_cast<const std::byte*>(item);
            for (std::size_t line = 0; line < LinesToAskFor; ++line) {
                __builtin_prefetch(memory + line * CacheLine);
            }
        }
        return place;
    }
    /// Asks for what adding or erasing the key will need.
    void prefetchIndex(const SV::String& key) const { index.prefetch(key.hash()); }

private:
    static constexpr std::size_t Missing = MeroPositionIndex::Missing;
    static constexpr std::size_t BlockSize = 64;
    static constexpr std::size_t CacheLine = 64;
    static constexpr std::size_t LinesToAskFor = [] {
        if constexpr (requires { Item::LinesOfHead; }) {
            return Item::LinesOfHead;
        } else {
            return (sizeof(Item) + CacheLine - 1) / CacheLine;
        }
    }();

    [[nodiscard]] Item& itemAt(std::size_t position) const {
        return blocks[position / BlockSize][position % BlockSize];
    }
    [[nodiscard]] bool isAt(std::size_t position, const SV::String& key) const {
        const Item& item = itemAt(position);
        return item.getKey() == key && item.isAlive();
    }
    [[nodiscard]] std::size_t positionOf(const SV::String& key) const {
        if constexpr (Memory == MeroPlaceMemory::InKeys) {
            const std::uint32_t hint = key.lookupHint();
            if (hint < used && isAt(hint, key)) {
                return hint;
            }
        }
        const std::size_t position = positionByHash(key);
        if (position != Missing) {
            remember(key, position);
        }
        return position;
    }
    static void remember(const SV::String& key, std::size_t position) {
        if constexpr (Memory == MeroPlaceMemory::InKeys) {
            key.setLookupHint(static_cast<Place>(position));
        }
    }
    [[nodiscard]] std::size_t positionByHash(const SV::String& key) const {
        return index.find(key.hash(), [&](std::size_t position) { return isAt(position, key); });
    }
    [[nodiscard]] std::size_t takePlace() {
        if (!freePositions.empty()) {
            const std::size_t position = freePositions.back();
            freePositions.pop_back();
            return position;
        }
        if (used == blocks.size() * BlockSize) {
            blocks.push_back(std::make_unique<Item[]>(BlockSize));
        }
        return used++;
    }

    std::vector<std::unique_ptr<Item[]>> blocks;
    std::vector<std::uint32_t> freePositions;
    MeroPositionIndex index;
    std::size_t used = 0;  ///< places that have been taken at some time
};

/// A plain value in such a table.
template <class Value>
class MeroPlacedValue {
public:
    void begin(const SV::String& newKey, const Value& newValue) {
        key = newKey;
        value = newValue;
        alive = true;
    }
    void clear() {
        key = {};
        value = {};
        alive = false;
    }
    [[nodiscard]] const SV::String& getKey() const { return key; }
    [[nodiscard]] bool isAlive() const { return alive; }
    [[nodiscard]] Value& getValue() { return value; }
    [[nodiscard]] const Value& getValue() const { return value; }

private:
    SV::String key;
    Value value{};
    bool alive = false;
};
