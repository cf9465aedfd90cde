#pragma once

#include "platform/engine/arrival_process.h"
#include "platform/engine/process_runner.h"
#include "platform/engine/simulation_settings.h"
#include "platform/engine/workforce.h"

namespace mero {

/// A run of either work load analysis on calendar time: instances arrive and live side by side, and contend
/// for workers and resources. A run that is limited by a number of instances goes on until all of them have
/// ended; what is open at the end of a run that is limited by time is counted as unfinished and sends
/// nothing. After the warm-up of a static work load the run begins anew for its observers, while the
/// processes go on.
class WorkLoadRun final : EventGate {
public:
    WorkLoadRun(const SimulationSettings& runSettings, const ProcessGraph& graph, const StaffPlan& staffPlan,
                const ArrivalPlan& arrivalPlan, ControlComponent& controlComponent,
                const RunProgress& runProgress, std::uint64_t seed);

    RunSummary run();

private:
    /// What comes next, in the order of things that are due at the same time.
    enum class Next { Nothing, Border, Restart, Arrival, Plan };

    bool mayGoOn(double time) override;
    [[nodiscard]] Next chooseNext(double& time) const;
    [[nodiscard]] bool isDone() const;
    void goOn(Next next);
    void arrive();
    void restart();
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
    double restartTime;
    double lastDeed = 0.0;  ///< time of the last thing that wasn't a border
    std::uint64_t nextProgress = 0;
    std::uint64_t timeless = 0;  ///< arrivals since the clock moved
    bool ended = false;
};

}  // namespace mero
