#pragma once

#include <optional>

#include "platform/engine/process_runner.h"
#include "platform/engine/simulation_settings.h"

namespace mero {

/// A run of the path analysis, or of the volume and capacity analysis, which names staff besides: instances
/// run one by one, each from the time at which the one before ended; with several main models one instance
/// of each in turn.
class PathRun final : EventGate {
public:
    /// `staffPlan` may be null: then nobody is named. `seed` is that of the replication.
    PathRun(const SimulationSettings& runSettings, const ProcessGraph& graph, const StaffPlan* staffPlan,
            ControlComponent& controlComponent, const RunProgress& runProgress, std::uint64_t seed);

    RunSummary run();

private:
    bool mayGoOn(double time) override;
    void runInstance(std::uint32_t model);
    void sendRunEvent(MeroEventCode code);

    const SimulationSettings& settings;
    const std::vector<std::uint32_t>& mains;
    ControlComponent& control;
    const RunProgress& progress;
    std::uint64_t firstEvent;
    std::optional<NamedStaff> staff;
    ProcessRunner runner;
    RunSummary summary;
    std::uint64_t nextProgress = 0;
    std::uint64_t timeless = 0;  ///< instances since the clock moved
    std::int64_t lastTime = 0;
    bool ended = false;
};

}  // namespace mero
