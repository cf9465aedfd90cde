#include "platform/engine/event_trace.h"

namespace mero {

template <std::size_t Size>
std::size_t EventTrace::GroupHash<Size>::operator()(const std::array<std::int32_t, Size>& group) const {
    std::uint64_t state = 0;
    for (const std::int32_t part : group) {
        state = mixBits(state ^ static_cast<std::uint32_t>(part)) + 1;
    }
    return state;
}

template <std::size_t Size>
std::uint32_t EventTrace::Groups<Size>::intern(const Group& group) {
    const auto [place, added] = numbers.try_emplace(group, static_cast<std::uint32_t>(groups.size()));
    if (added) {
        groups.push_back(group);
    }
    return place->second;
}

void EventTrace::append(const SimEvent& event) {
    Row row{};
    row.time = event.time;
    row.code = event.code;
    row.place =
        places.intern({event.mainModelId, internKey(*event.mainKey), event.modelId, internKey(*event.key)});
    row.objectId = event.objectId;
    row.passKey = keys.intern(event.passKey->view());
    row.staff = staff.intern({event.executiveId, event.assignedExecutiveId, event.resourceId});
    row.call = calls.intern({event.calledModelId, internKey(*event.calledKey), event.callingObjectId});
    rows.push_back(row);
}

}  // namespace mero
