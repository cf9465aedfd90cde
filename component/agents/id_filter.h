#pragma once

#include <cstdint>
#include <vector>

#include "component/host/containers.h"
#include "component/host/types.h"

/// A set of identifiers for questions on the hot path: one bit for each identifier between the smallest and
/// the largest, so that those of a million objects find room in a cache. Where they are strewn too thinly for
/// that, they are searched.
class MeroIdFilter {
public:
    void assign(const ISortedSet<MeroId>& ids);
    [[nodiscard]] bool contains(MeroId id) const {
        const auto offset = static_cast<std::uint64_t>(std::int64_t{id} - first);
        if (offset < bitCount) {
            return ((bits[offset / BitsOfWord] >> (offset % BitsOfWord)) & 1U) != 0;
        }
        return bitCount == 0 && strewn.contains(id);
    }

private:
    static constexpr std::uint64_t BitsOfWord = 64;

    std::int64_t first = 0;
    std::uint64_t bitCount = 0;
    std::vector<std::uint64_t> bits;
    ISortedSet<MeroId> strewn;  ///< all of them, where there are no bits
};
