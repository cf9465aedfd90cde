#include "platform/engine/crew.h"

namespace mero {

Crew::Crew(const CrewPlan& crewPlan)
    : plan(crewPlan), states(crewPlan.members.size()), lists(crewPlan.groups.size()) {
    std::vector<std::vector<std::uint32_t>> groupsOf(plan.members.size());
    for (std::uint32_t group = 0; group < plan.groups.size(); ++group) {
        for (const std::uint32_t member : plan.groups[group]) {
            groupsOf[member].push_back(group);
        }
    }
    for (std::uint32_t member = 0; member < states.size(); ++member) {
        states[member].firstPlace = static_cast<std::uint32_t>(places.size());
        states[member].placeCount = static_cast<std::uint32_t>(groupsOf[member].size());
        for (const std::uint32_t group : groupsOf[member]) {
            places.push_back({member, group});
        }
    }
}

void Crew::hold(std::uint32_t member, PoolHandle pass) {
    unlist(member);
    states[member].held = true;
    states[member].pass = pass;
}

void Crew::setOnShift(std::uint32_t member, bool onShift) {
    states[member].onShift = onShift;
    if (!onShift) {
        unlist(member);
    }
}

void Crew::list(std::uint32_t member) {
    State& state = states[member];
    if (state.listed || state.held || !state.onShift) {
        return;
    }
    state.listed = true;
    for (std::uint32_t place = state.firstPlace; place < state.firstPlace + state.placeCount; ++place) {
        List& group = lists[places[place].group];
        places[place].previous = group.lastPlace;
        places[place].next = None;
        if (group.lastPlace == None) {
            group.firstPlace = place;
            group.first = member;
        } else {
            places[group.lastPlace].next = place;
        }
        group.lastPlace = place;
    }
}

void Crew::unlist(std::uint32_t member) {
    State& state = states[member];
    if (!state.listed) {
        return;
    }
    state.listed = false;
    for (std::uint32_t place = state.firstPlace; place < state.firstPlace + state.placeCount; ++place) {
        List& group = lists[places[place].group];
        const auto [self, number, previous, next] = places[place];
        (previous == None ? group.firstPlace : places[previous].next) = next;
        (next == None ? group.lastPlace : places[next].previous) = previous;
        group.first = group.firstPlace == None ? None : places[group.firstPlace].member;
    }
}

}  // namespace mero
