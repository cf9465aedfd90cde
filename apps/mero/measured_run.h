#pragma once

#include <string>
#include <vector>

#include "apps/mero/collected_results.h"
#include "apps/mero/message_printer.h"
#include "apps/mero/run_options.h"
#include "component/management/agent_management.h"
#include "platform/engine/control_component.h"
#include "platform/interchange/result_table.h"
#include "platform/repository/repository_services.h"

namespace mero {

/// What a run has measured, after its end.
struct RunResults {
    ResultDocument document;
    std::vector<ResultTable> tables;
    std::vector<std::string> historyFiles;
    bool areGapsExplained = false;  ///< measures without results have been told, with the reason
};

/// What all runs under these options share; seed, runs and title are left to the caller.
[[nodiscard]] RunDescription describeRun(const RunOptions& options, const RunPlan& plan,
                                         const Repository& repository);

/// One run of the agents, from their start to their end. The engine or a replay plays between `start` and
/// `finish`.
class MeasuredRun {
public:
    /// All references have to outlive this.
    MeasuredRun(Repository& models, const RunOptions& runOptions, const RunPlan& runPlan,
                const Console& console);

    /// Starts the agents on `control`. A start that fails is told, recorded in the results and no obstacle:
    /// the run is then played without the agents concerned.
    void start(ControlComponent& control);
    /// Fetches the results, tells which measures have none, and ends the agents. Once.
    RunResults finish();

private:
    [[nodiscard]] std::vector<std::string> findHistoryFiles() const;

    Repository& repository;
    const RunOptions& options;
    const RunPlan& plan;
    const Console& console;
    MessagePrinter messages;
    RepositoryServices services;
    MeroAgentManagement management;
    int startStatus = 0;
};

}  // namespace mero
