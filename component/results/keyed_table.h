#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

#include "component/results/position_index.h"

/// Entry of a `MeroKeyedTable`.
template <class Key, class Item>
struct MeroTableEntry {
    Key key;
    Item item;
    std::uint32_t tag;  ///< lower half of the hash: other keys needn't be looked at where they lie
};
template <std::integral Key, class Item>
struct MeroTableEntry<Key, Item> {
    Key key;
    Item item;
};

/// Table by key for the hot path: entries lie densely in the order of making, a hash index comes in only when
/// there are more than a handful, erasing moves the last entry into the gap. Pointers to entries hold until
/// the next insertion or erasure. Whoever needs an order asks `sortBy` for it.
template <class Key, class Item>
class MeroKeyedTable {
public:
    using Entry = MeroTableEntry<Key, Item>;
    using Entries = std::vector<Entry>;
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

    // Ask for memory, in this order: where the key is looked up, the entry. Nothing where there are few.

    void prefetchIndex(const Key& key) const { index.prefetch(hashOf(key)); }
    void prefetchEntry(const Key& key) const {
        const std::size_t position = index.findFirst(hashOf(key));
        if (position != Missing) {
            __builtin_prefetch(&entries[position]);
        }
    }

    /// The key must not be there.
    Item& add(const Key& key, Item item) {
        if (entries.empty()) {
            entries.reserve(AHandful);
        }
        if constexpr (LiesInPlace) {
            entries.push_back(Entry{key, std::move(item)});
        } else {
            entries.push_back(Entry{key, std::move(item), tagOf(key)});
        }
        if (!index.empty()) {
            index.add(hashOf(key), entries.size() - 1);
        } else if (entries.size() > LinearLimit) {
            indexAll();
        }
        return entries.back().item;
    }

    /// True if the key was there.
    bool erase(const Key& key) {
        const std::size_t position = positionOf(key);
        if (position == Missing) {
            return false;
        }
        const std::size_t last = entries.size() - 1;
        if (!index.empty()) {
            index.erase(hashOf(key), position);
        }
        if (position != last) {
            if (!index.empty()) {
                index.move(hashOf(entries[last].key), last, position);
            }
            entries[position] = std::move(entries[last]);
        }
        entries.pop_back();
        return true;
    }

    /// Keeps the memory.
    void clear() {
        entries.clear();
        index.clear();
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
        if (!index.empty()) {
            indexAll();
        }
    }

    [[nodiscard]] bool empty() const { return entries.empty(); }
    [[nodiscard]] std::size_t size() const { return entries.size(); }
    [[nodiscard]] iterator begin() { return entries.begin(); }
    [[nodiscard]] iterator end() { return entries.end(); }
    [[nodiscard]] const_iterator begin() const { return entries.begin(); }
    [[nodiscard]] const_iterator end() const { return entries.end(); }

private:
    static constexpr std::size_t Missing = MeroPositionIndex::Missing;
    /// Up to so many entries are searched one by one.
    static constexpr std::size_t LinearLimit = 8;
    static constexpr std::size_t AHandful = 4;
    static constexpr bool LiesInPlace = std::integral<Key>;

    [[nodiscard]] static std::size_t hashOf(const Key& key) { return std::hash<Key>{}(key); }
    [[nodiscard]] static std::uint32_t tagOf(const Key& key) {
        return static_cast<std::uint32_t>(hashOf(key));
    }

    [[nodiscard]] std::size_t positionOf(const Key& key) const {
        return index.empty() ? positionOneByOne(key) : positionByHash(key);
    }
    [[nodiscard]] std::size_t positionOneByOne(const Key& key) const {
        if (entries.empty()) {
            return Missing;
        }
        const auto found = [&] {
            if constexpr (LiesInPlace) {
                return std::ranges::find(entries, key, &Entry::key);
            } else {
                return std::ranges::find_if(entries, [&, tag = tagOf(key)](const Entry& entry) {
                    return entry.tag == tag && entry.key == key;
                });
            }
        }();
        return found != entries.end() ? static_cast<std::size_t>(found - entries.begin()) : Missing;
    }
    [[nodiscard]] std::size_t positionByHash(const Key& key) const {
        return index.find(hashOf(key), [&](std::size_t position) { return entries[position].key == key; });
    }
    void indexAll() {
        index.clear();
        for (std::size_t position = 0; position < entries.size(); ++position) {
            index.add(hashOf(entries[position].key), position);
        }
    }

    Entries entries;
    MeroPositionIndex index;  ///< empty while there are few entries
};

/// Whether `left` comes before `right` as decimal text: shorter texts first, then by bytes.
[[nodiscard]] bool isBeforeAsDecimalText(std::int32_t left, std::int32_t right);
