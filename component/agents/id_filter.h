#pragma once

#include <cstdint>
#include <unordered_set>
#include <vector>

#include "component/host/containers.h"
#include "component/host/types.h"

/// A set of identifiers for questions on the hot path: one bit for each identifier between the smallest and
/// the largest, so that those of a million objects find room in a cache. Where they are strewn too thinly for
/// that, they are searched.
class MeroIdFilter {
public:
    /// Makes it these identifiers.
    void assign(const ISortedSet<MeroId>& ids);
    /// Makes it empty, with room for these identifiers.
    void clear(const ISortedSet<MeroId>& candidates);
    /// Adds one of the candidates; any other may get lost.
    void insert(MeroId id) {
        const std::uint64_t offset = offsetOf(id);
        if (offset < bitCount) {
            bits[offset / BitsOfWord] |= std::uint64_t{1} << (offset % BitsOfWord);
        } else if (bitCount == 0) {
            strewn.insert(id);
        }
    }
    [[nodiscard]] bool contains(MeroId id) const {
        const std::uint64_t offset = offsetOf(id);
        if (offset < bitCount) {
            return ((bits[offset / BitsOfWord] >> (offset % BitsOfWord)) & 1U) != 0;
        }
        return bitCount == 0 && strewn.contains(id);
    }

private:
    static constexpr std::uint64_t BitsOfWord = 64;

    [[nodiscard]] std::uint64_t offsetOf(MeroId id) const {
        return static_cast<std::uint64_t>(std::int64_t{id} - first);
    }

    std::int64_t first = 0;
    std::uint64_t bitCount = 0;
    std::vector<std::uint64_t> bits;
    std::unordered_set<MeroId> strewn;  ///< all of them, where there are no bits
};
