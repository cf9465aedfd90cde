#include "component/agents/id_filter.h"

void MeroIdFilter::assign(const ISortedSet<MeroId>& ids) {
    constexpr std::uint64_t MostBitsForAnId = 256;
    *this = {};
    if (ids.empty()) {
        return;
    }
    first = *ids.begin();
    const auto range = static_cast<std::uint64_t>(std::int64_t{ids[ids.size() - 1]} - first) + 1;
    if (range > ids.size() * MostBitsForAnId) {
        strewn = ids;
        return;
    }
    bitCount = range;
    bits.resize((range + BitsOfWord - 1) / BitsOfWord);
    for (const MeroId id : ids) {
        const auto offset = static_cast<std::uint64_t>(std::int64_t{id} - first);
        bits[offset / BitsOfWord] |= std::uint64_t{1} << (offset % BitsOfWord);
    }
}
