#pragma once

#include <cstdint>
#include <vector>

#include "platform/engine/pool.h"
#include "platform/engine/staff_plan.h"

namespace mero {

/// The workers, or the resources, of a run: who is on shift, who holds which pass, and who of a group has
/// been free for the longest time. Taking and freeing a member costs the number of its groups.
class Crew {
public:
    static constexpr std::uint32_t None = Holders::None;

    explicit Crew(const CrewPlan& crewPlan);

    [[nodiscard]] MeroId idOf(std::uint32_t member) const { return plan.members[member].id; }
    [[nodiscard]] double paceOf(std::uint32_t member) const { return plan.members[member].pace; }
    [[nodiscard]] std::size_t size() const { return plan.members.size(); }

    /// The one of the group who is on shift and has been free for the longest time; `None` if there is none.
    [[nodiscard]] std::uint32_t firstFree(std::uint32_t group) const { return lists[group].first; }
    [[nodiscard]] bool isFree(std::uint32_t member) const { return states[member].listed; }
    [[nodiscard]] bool isHeld(std::uint32_t member) const { return states[member].held; }
    [[nodiscard]] bool isOnShift(std::uint32_t member) const { return states[member].onShift; }
    /// What the member is held by.
    [[nodiscard]] PoolHandle passOf(std::uint32_t member) const { return states[member].pass; }

    void hold(std::uint32_t member, PoolHandle pass);
    /// The member may be on shift, and then waits to be listed.
    void release(std::uint32_t member) { states[member].held = false; }
    void setOnShift(std::uint32_t member, bool onShift);
    /// Puts the member at the end of the free ones; one that is held or off shift stays out.
    void list(std::uint32_t member);

private:
    struct State {
        bool onShift = false;
        bool held = false;
        bool listed = false;
        PoolHandle pass;
        std::uint32_t firstPlace = 0;
        std::uint32_t placeCount = 0;
    };
    /// A member in the list of the free ones of a group.
    struct Place {
        std::uint32_t member;
        std::uint32_t group;
        std::uint32_t previous = None;  ///< place
        std::uint32_t next = None;
    };
    struct List {
        std::uint32_t first = None;  ///< member
        std::uint32_t firstPlace = None;
        std::uint32_t lastPlace = None;
    };

    void unlist(std::uint32_t member);

    const CrewPlan& plan;
    std::vector<State> states;
    std::vector<Place> places;  ///< by member
    std::vector<List> lists;    ///< by group
};

}  // namespace mero
