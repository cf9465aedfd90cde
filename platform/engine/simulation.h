#pragma once

#include <optional>

#include "platform/engine/arrival_plan.h"
#include "platform/engine/control_component.h"
#include "platform/engine/process_graph.h"
#include "platform/engine/simulation_settings.h"
#include "platform/engine/staff_plan.h"
#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// Simulates the processes of a repository. In the path analysis and the volume and capacity analysis
/// instances run one by one (`PathRun`); in the work load analyses they arrive on calendar time and contend
/// for workers and resources (`WorkLoadRun`). Two runs with equal settings send the same events.
class Simulation {
public:
    /// Refuses settings without an end, and models and environments that can't be compiled (see
    /// `ProcessGraph`, `StaffPlan`, `ArrivalPlan`). The repository isn't changed, and isn't needed
    /// afterwards.
    static Result<Simulation> prepare(Repository& repository, const SimulationSettings& settings);

    /// What is odd in the models and how it is dealt with, one sentence each.
    [[nodiscard]] const std::vector<std::string>& problems() const { return oddities; }

    /// Sends all events of a run, from its start to its end, also when it is cancelled. Runs with another
    /// `replication` are independent of each other; see `seedOfReplication`.
    [[nodiscard]] RunSummary run(ControlComponent& control, const RunProgress& progress = {},
                                 std::uint64_t replication = 0) const;

private:
    Simulation(SimulationSettings runSettings, ProcessGraph processGraph);

    SimulationSettings settings;
    ProcessGraph graph;
    std::optional<StaffPlan> staff;       ///< of all analyses but the path analysis
    std::optional<ArrivalPlan> arrivals;  ///< of the work load analyses
    std::vector<std::string> oddities;
};

}  // namespace mero
