#include "platform/engine/event_trace.h"

namespace mero {

template <std::size_t Size>
std::uint32_t EventTrace::Groups<Size>::intern(const Group& group) {
    if (group == groups[last]) {
        return last;
    }
    const auto [place, added] = numbers.try_emplace(group, static_cast<std::uint32_t>(groups.size()));
    if (added) {
        groups.push_back(group);
    }
    last = place->second;
    return last;
}

void EventTrace::append(const SimEvent& event) {
    const std::int32_t mainKey = internKey(*event.mainKey, 0);
    Row row{};
    row.time = event.time;
    row.digest = digestOf(event);
    row.code = event.code;
    row.place = places.intern({event.mainModelId, mainKey, event.modelId,
                               event.key == event.mainKey ? mainKey : internKey(*event.key, 1)});
    row.objectId = event.objectId;
    row.passKey = static_cast<std::uint32_t>(internKey(*event.passKey, 2));
    row.staff = staff.intern({event.executiveId, event.assignedExecutiveId, event.resourceId});
    row.call = calls.intern({event.calledModelId, internKey(*event.calledKey, 3), event.callingObjectId});
    rows.push_back(row);
}

/// Neighbouring events mostly have the same keys.
std::int32_t EventTrace::internKey(const SV::String& key, std::size_t column) {
    if (keys[lastKeys[column]] != key) {
        lastKeys[column] = keys.intern(key.view());
    }
    return static_cast<std::int32_t>(lastKeys[column]);
}

}  // namespace mero
