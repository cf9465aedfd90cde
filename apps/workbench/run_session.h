#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "component/host/sv_datetime.h"

#include "component/management/agent_management.h"
#include "platform/diagram/measure_overlay.h"
#include "platform/engine/control_component.h"
#include "platform/engine/simulation_settings.h"
#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// What the user wants to have simulated.
struct RunRequest {
    Analysis analysis = Analysis::Path;
    std::vector<MeroId> models;
    MeroId environment = MeroNoId;
    std::uint64_t instances = 1000;     ///< of each main model; 0 for no limit
    std::optional<std::int64_t> until;  ///< seconds
    std::uint64_t seed = 1;
    std::optional<SV::DateTime> start;  ///< needed by the work load analyses
    TimeBase timeBase;
};

/// One measure of one agent in the run.
struct RunMeasure {
    MeroId agent = MeroNoId;
    MeasureOverlay overlay;
    bool isFrequency = false;  ///< its values are numbers of executions
};

/// Takes the agents through runs, one after the other: their results stay open until the next run or `end`.
class RunSession {
public:
    /// Both have to outlive this.
    RunSession(Repository& simulatedRepository, MeroAgentManagement& agentManagement)
        : repository(simulatedRepository), management(agentManagement) {}
    RunSession(const RunSession&) = delete;
    RunSession& operator=(const RunSession&) = delete;
    ~RunSession() { end(); }

    /// Ends the run before, simulates, and keeps the results open. Refuses what can't be simulated; then
    /// nothing has begun. A run that `progress` stops has the results so far.
    Result<RunSummary> run(const RunRequest& request, const RunProgress& progress);

    [[nodiscard]] bool hasRun() const { return control != nullptr; }
    /// What is odd in the models, and how it was dealt with; status of the agents' start.
    [[nodiscard]] const std::vector<std::string>& problems() const { return oddities; }
    [[nodiscard]] int startStatus() const { return status; }
    /// Values of all measures by object, unscaled: those of the paths to an object added up. In the order of
    /// the agents and of their definitions.
    [[nodiscard]] std::vector<RunMeasure> measures(const std::string& context);
    /// Lets the user choose among the results; returns when the windows are closed.
    int showResults(SV::Window* parent);
    /// Ends the agents' run and with it their results.
    void end();

private:
    Repository& repository;
    MeroAgentManagement& management;
    std::unique_ptr<ControlComponent> control;
    TimeBase timeBase;
    std::vector<std::string> oddities;
    int status = 0;
};

}  // namespace mero
