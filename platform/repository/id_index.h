#pragma once

#include <algorithm>
#include <span>
#include <unordered_map>
#include <vector>

#include "component/host/types.h"

namespace mero {

// Indices of identifiers: ascending lists, by a key.

inline void insertSorted(std::vector<MeroId>& ids, MeroId id) {
    if (ids.empty() || ids.back() < id) {
        ids.push_back(id);
    } else {
        ids.insert(std::lower_bound(ids.begin(), ids.end(), id), id);
    }
}

inline void eraseSorted(std::vector<MeroId>& ids, MeroId id) {
    const auto place = std::lower_bound(ids.begin(), ids.end(), id);
    if (place != ids.end() && *place == id) {
        ids.erase(place);
    }
}

/// Removes `id` from the entry of `key`, and the entry when nothing is left of it.
template <class Map, class Key>
void eraseFromIndex(Map& index, const Key& key, MeroId id) {
    const auto entry = index.find(key);
    if (entry != index.end()) {
        eraseSorted(entry->second, id);
        if (entry->second.empty()) {
            index.erase(entry);
        }
    }
}

/// Null where nothing fits.
template <class Map>
auto findIn(Map& map, MeroId id) -> decltype(&map.begin()->second) {
    const auto found = map.find(id);
    return found != map.end() ? &found->second : nullptr;
}

inline std::span<const MeroId> idsIn(const std::unordered_map<MeroId, std::vector<MeroId>>& index,
                                     MeroId key) {
    const auto* ids = findIn(index, key);
    return ids != nullptr ? std::span<const MeroId>(*ids) : std::span<const MeroId>();
}

}  // namespace mero
