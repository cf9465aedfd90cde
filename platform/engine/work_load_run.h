#pragma once

#include <limits>

#include "platform/engine/arrival_process.h"
#include "platform/engine/process_runner.h"
#include "platform/engine/simulation_settings.h"
#include "platform/engine/workforce.h"

namespace mero {

/// A run of either work load analysis on calendar time: instances arrive and live side by side, and contend
/// for workers and resources. A run that is limited by a number of instances goes on until all of them have
/// ended; what is open at the end of a run that is limited by time is counted as unfinished and sends
/// nothing. Of the warm-up of a static work load nothing is sent: the run's start is sent at its end, and
/// then what is going on at that time.
class WorkLoadRun final : EventGate {
public:
    WorkLoadRun(const SimulationSettings& runSettings, const ProcessGraph& graph, const StaffPlan& staffPlan,
                const ArrivalPlan& arrivalPlan, ControlComponent& controlComponent,
                const RunProgress& runProgress, std::uint64_t seed);

    RunSummary run();

private:
    /// What comes next, in the order of things that are due at the same time.
    enum class Next { Nothing, Border, Observation, Arrival, Plan };

    bool mayGoOn(double time) override;
    /// How the limit is told that ends the run now; null if none does.
    [[nodiscard]] const char* exceededLimit(double time) const;
    [[nodiscard]] Next chooseNext(double& time) const;
    [[nodiscard]] bool isDone() const;
    void goOn(Next next);
    void arrive();
    [[nodiscard]] bool isWarmingUp() const {
        return observationTime != std::numeric_limits<double>::infinity();
    }
    void beginObservation();
    [[nodiscard]] bool isIdleForEver(double time) const;
    void sendRunEvent(MeroEventCode code, double time);

    const SimulationSettings& settings;
    ControlComponent& control;
    const RunProgress& progress;
    std::uint64_t firstEvent;
    Workforce workforce;
    ArrivalProcess arrivals;
    ProcessRunner runner;
    RunSummary summary;
    double observationTime;      ///< end of the warm-up; infinity when that has passed
    double lastDeed = 0.0;       ///< time of the last thing that wasn't a border
    std::uint64_t happened = 0;  ///< events, also those that aren't sent
    std::uint64_t timeless = 0;  ///< arrivals since the clock moved
    bool ended = false;
};

}  // namespace mero
