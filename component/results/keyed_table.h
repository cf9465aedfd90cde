#pragma once

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

#include "component/results/small_vector.h"

/// Keys that remember where a table found them last.
template <class Key>
concept MeroHintedKey = requires(const Key& key) {
    { key.lookupHint() } -> std::same_as<std::uint32_t>;
    key.setLookupHint(std::uint32_t{});
};

/// Table by key for the hot path: entries lie densely in the order of making, a hash index comes in only when
/// there are more than a handful, erasing moves the last entry into the gap. Pointers to entries hold until
/// the next insertion or erasure. Whoever needs an order asks `sortBy` for it. With `InPlace` so many entries
/// lie in the table itself, which then can't be copied or moved.
template <class Key, class Item, std::size_t InPlace = 0>
class MeroKeyedTable {
public:
    struct Entry {
        Key key;
        Item item;
    };
    using Entries = std::conditional_t<InPlace == 0, std::vector<Entry>, MeroSmallVector<Entry, InPlace>>;
    using iterator = typename Entries::iterator;
    using const_iterator = typename Entries::const_iterator;

    [[nodiscard]] Item* find(const Key& key) {
        const std::size_t position = positionOf(key);
        return position != Missing ? &entries[position].item : nullptr;
    }
    [[nodiscard]] const Item* find(const Key& key) const {
        const std::size_t position = positionOf(key);
        return position != Missing ? &entries[position].item : nullptr;
    }
    [[nodiscard]] bool contains(const Key& key) const { return positionOf(key) != Missing; }

    /// The key must not be there.
    Item& add(const Key& key, Item item) {
        entries.push_back(Entry{key, std::move(item)});
        leaveHint(entries.size() - 1);
        if (!slotTable.empty() && entries.size() * 2 <= slotTable.size()) {
            place(entries.size() - 1);
        } else if (entries.size() > LinearLimit) {
            rebuildIndex();
        }
        return entries.back().item;
    }

    /// True if the key was there.
    bool erase(const Key& key) {
        const std::size_t position = positionOf(key);
        if (position == Missing) {
            return false;
        }
        if (!slotTable.empty()) {
            unplace(position);
        }
        const std::size_t last = entries.size() - 1;
        if (position != last) {
            if (!slotTable.empty()) {
                slotTable[slotOf(last)].position = static_cast<std::uint32_t>(position + 1);
            }
            entries[position] = std::move(entries[last]);
            leaveHint(position);
        }
        entries.pop_back();
        return true;
    }

    /// Keeps the memory.
    void clear() {
        entries.clear();
        std::fill(slotTable.begin(), slotTable.end(), Slot{});
    }

    /// Brings the entries into the order of `less(key, key)`; costs only a look if they are in order already.
    template <class Less>
    void sortBy(Less less) {
        const auto byKey = [&less](const Entry& left, const Entry& right) {
            return less(left.key, right.key);
        };
        if (std::is_sorted(entries.begin(), entries.end(), byKey)) {
            return;
        }
        std::sort(entries.begin(), entries.end(), byKey);
        if (!slotTable.empty()) {
            rebuildIndex();
        }
    }

    [[nodiscard]] bool empty() const { return entries.empty(); }
    [[nodiscard]] std::size_t size() const { return entries.size(); }
    [[nodiscard]] iterator begin() { return entries.begin(); }
    [[nodiscard]] iterator end() { return entries.end(); }
    [[nodiscard]] const_iterator begin() const { return entries.begin(); }
    [[nodiscard]] const_iterator end() const { return entries.end(); }

private:
    static constexpr std::size_t Missing = static_cast<std::size_t>(-1);
    static constexpr std::size_t LinearLimit = 8;

    /// Place in the index. The hash spares looking at the keys of other entries.
    struct Slot {
        std::uint32_t position = 0;  ///< of the entry, plus 1; 0 if the slot is free
        std::uint32_t hash = 0;
    };

    /// Fibonacci hashing spreads the hashes of small numbers, which are the numbers themselves.
    [[nodiscard]] static std::uint64_t spreadHashOf(const Key& key) {
        return static_cast<std::uint64_t>(std::hash<Key>{}(key)) * 0x9E3779B97F4A7C15ULL;
    }
    [[nodiscard]] std::size_t homeOf(std::uint32_t hash) const { return hash >> shift; }
    [[nodiscard]] static std::uint32_t hashOf(const Key& key) {
        return static_cast<std::uint32_t>(spreadHashOf(key) >> 32);
    }
    [[nodiscard]] std::size_t next(std::size_t slot) const { return (slot + 1) & (slotTable.size() - 1); }

    [[nodiscard]] std::size_t positionOf(const Key& key) const {
        if (slotTable.empty()) {
            for (std::size_t position = 0; position < entries.size(); ++position) {
                if (entries[position].key == key) {
                    return position;
                }
            }
            return Missing;
        }
        if constexpr (MeroHintedKey<Key>) {
            return positionByHint(key);
        } else {
            return positionByHash(key);
        }
    }
    /// The index of a large table isn't in the processor's cache, while the key and its entry are needed
    /// anyway.
    [[nodiscard]] std::size_t positionByHint(const Key& key) const {
        const std::uint32_t hint = key.lookupHint();
        if (hint < entries.size() && entries[hint].key == key) {
            return hint;
        }
        const std::size_t position = positionByHash(key);
        if (position != Missing) {
            key.setLookupHint(static_cast<std::uint32_t>(position));
        }
        return position;
    }
    void leaveHint(std::size_t position) {
        if constexpr (MeroHintedKey<Key>) {
            entries[position].key.setLookupHint(static_cast<std::uint32_t>(position));
        }
    }
    [[nodiscard]] std::size_t positionByHash(const Key& key) const {
        const std::uint32_t hash = hashOf(key);
        for (std::size_t slot = homeOf(hash); slotTable[slot].position != 0; slot = next(slot)) {
            if (slotTable[slot].hash == hash && entries[slotTable[slot].position - 1].key == key) {
                return slotTable[slot].position - 1;
            }
        }
        return Missing;
    }
    [[nodiscard]] std::size_t slotOf(std::size_t position) const {
        std::size_t slot = homeOf(hashOf(entries[position].key));
        while (slotTable[slot].position != position + 1) {
            slot = next(slot);
        }
        return slot;
    }
    void place(std::size_t position) {
        const std::uint32_t hash = hashOf(entries[position].key);
        std::size_t slot = homeOf(hash);
        while (slotTable[slot].position != 0) {
            slot = next(slot);
        }
        slotTable[slot] = {static_cast<std::uint32_t>(position + 1), hash};
    }
    /// Closes the gap that the slot of `position` leaves, so that searches need no marks for erased entries.
    void unplace(std::size_t position) {
        const std::size_t mask = slotTable.size() - 1;
        std::size_t gap = slotOf(position);
        for (std::size_t slot = next(gap); slotTable[slot].position != 0; slot = next(slot)) {
            const std::size_t home = homeOf(slotTable[slot].hash);
            if (((slot - home) & mask) >= ((slot - gap) & mask)) {
                slotTable[gap] = slotTable[slot];
                gap = slot;
            }
        }
        slotTable[gap] = {};
    }
    void rebuildIndex() {
        const std::size_t wanted = std::bit_ceil(entries.size() * 3);
        if (slotTable.size() < wanted) {
            slotTable.resize(wanted);
            shift = 32 - std::countr_zero(wanted);
        }
        std::fill(slotTable.begin(), slotTable.end(), Slot{});
        for (std::size_t position = 0; position < entries.size(); ++position) {
            place(position);
        }
    }

    Entries entries;
    std::vector<Slot> slotTable;  ///< none while there are few entries, else a power of two
    int shift = 32;
};

/// Whether `left` comes before `right` as decimal text: shorter texts first, then by bytes.
[[nodiscard]] bool isBeforeAsDecimalText(std::int32_t left, std::int32_t right);
