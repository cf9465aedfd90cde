#include "component/agents/id_filter.h"

void MeroIdFilter::clear(const ISortedSet<MeroId>& candidates) {
    constexpr std::uint64_t MostBitsForAnId = 256;
    *this = {};
    if (candidates.empty()) {
        return;
    }
    first = *candidates.begin();
    const std::uint64_t range = offsetOf(candidates[candidates.size() - 1]) + 1;
    if (range <= candidates.size() * MostBitsForAnId) {
        bitCount = range;
        bits.resize((range + BitsOfWord - 1) / BitsOfWord);
    }
}

void MeroIdFilter::assign(const ISortedSet<MeroId>& ids) {
    clear(ids);
    for (const MeroId id : ids) {
        insert(id);
    }
}
