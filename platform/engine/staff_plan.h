#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/engine/distribution.h"
#include "platform/engine/holders.h"
#include "platform/engine/process_graph.h"
#include "platform/engine/shift_plan.h"
#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// Workers, or resources, and the groups that the assignment rules form of them.
struct CrewPlan {
    struct Member {
        MeroId id = MeroNoId;
        std::uint32_t shift = 0;  ///< in `StaffPlan::shifts`
        double pace = 1.0;        ///< a second of work takes so many seconds of presence
    };

    std::vector<Member> members;
    std::vector<std::vector<std::uint32_t>> groups;  ///< members, ascending by identifier

    /// Number of the group, which is made if it isn't there.
    std::uint32_t groupOf(std::vector<std::uint32_t> candidates);
};

/// The working environment of a run and what the activities need of it, as dense arrays. A worker whose
/// availability isn't above 0, and whoever has a calendar without working time, isn't a candidate. Worker and
/// resource are each one of the candidates that a rule names.
class StaffPlan {
public:
    static constexpr std::uint32_t None = Holders::None;

    /// What a pass waits for: one of a group of workers and one of a group of resources, as far as given.
    struct Need {
        std::uint32_t workerGroup = None;
        std::uint32_t resourceGroup = None;
    };

    /// Refused: rules, calendars and durations that can't be read, with the object that has them. Rules
    /// that name nobody are told in `problems`; such an activity needs nobody. The repository is only read;
    /// the evaluation of object expressions wants it writable.
    static Result<StaffPlan> compile(Repository& repository, const ProcessGraph& graph, MeroId environment,
                                     std::int64_t startOffset);

    [[nodiscard]] const CrewPlan& workers() const { return workerCrew; }
    [[nodiscard]] const CrewPlan& resources() const { return resourceCrew; }
    [[nodiscard]] const std::vector<ShiftPlan>& shifts() const { return shiftPlans; }
    [[nodiscard]] const std::vector<Need>& needs() const { return needList; }
    /// Need of a node, by its number in the graph; `None` if it needs nobody and nothing.
    [[nodiscard]] std::uint32_t needOf(std::uint32_t node) const { return needOfNode[node]; }
    /// How long the worker takes for the node; null if the node's own duration holds.
    [[nodiscard]] const Distribution* durationOf(std::uint32_t node, std::uint32_t worker) const {
        const std::vector<std::uint32_t>& own = durationsOfNode[node];
        return own.empty() || own[worker] == None ? nullptr : &distributions[own[worker]];
    }
    /// One sentence each.
    [[nodiscard]] const std::vector<std::string>& problems() const { return oddities; }

private:
    friend class StaffCompiler;

    CrewPlan workerCrew;
    CrewPlan resourceCrew;
    std::vector<ShiftPlan> shiftPlans;
    std::vector<Need> needList;
    std::vector<std::uint32_t> needOfNode;
    std::vector<std::vector<std::uint32_t>> durationsOfNode;  ///< by worker, empty if nobody has his own
    std::vector<Distribution> distributions;
    std::vector<std::string> oddities;
};

}  // namespace mero
