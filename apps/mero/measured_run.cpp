#include "apps/mero/measured_run.h"

#include <filesystem>
#include <fmt/format.h>

#include "component/host/core_variables.h"
#include "component/host/sv_boxes.h"

#include "apps/mero/agent_definitions.h"
#include "apps/mero/measure_notes.h"
#include "apps/mero/run_settings.h"
#include "component/agents/atomar_agent.h"
#include "component/agents/super_agent.h"
#include "platform/toolkit/internal_errors.h"

namespace mero {

namespace {

/// Why agents don't measure, in the user's words; empty if all that should do.
std::string describeStart(int status) {
    switch (status) {
        case StatusOk:
        case StatusInvalidAgents:  // the question about them has told it
            return {};
        case StatusRepositoryError:
            return "the agents couldn't be started: a called model is missing or isn't loaded";
        default:
            return fmt::format("not all agents could be started (status {})", status);
    }
}

}  // namespace

RunDescription describeRun(const RunOptions& options, const RunPlan& plan, const Repository& repository) {
    RunDescription run;
    for (const MeroId model : plan.models) {
        run.models.emplace_back(repository.findModel(model)->name.view());
    }
    if (plan.environment != MeroNoId) {
        run.environment = repository.findModel(plan.environment)->name.view();
    }
    run.analysis = options.analysisName();
    run.start = options.start;
    run.daysPerYear = options.daysPerYear;
    run.hoursPerDay = options.hoursPerDay;
    run.total = options.total;
    run.groupClass = options.groupClass;
    run.groupRelation = options.groupRelation;
    run.scaledStarts = options.scaled;
    run.scalePeriod = options.period;
    run.scaleScope = options.scope;
    return run;
}

MeasuredRun::MeasuredRun(Repository& models, const RunOptions& runOptions, const RunPlan& runPlan,
                         const Console& target)
    : repository(models),
      options(runOptions),
      plan(runPlan),
      console(target),
      messages(target),
      services(models) {}

void MeasuredRun::start(ControlComponent& control) {
    ISortedSet<MeroId> models;
    models.insertRange(plan.models.begin(), plan.models.end());
    startStatus =
        management.simStart(options.analysis, &control, simulationAttributes(), models, plan.environment,
                            plan.start ? &*plan.start : nullptr, options.daysPerYear, options.hoursPerDay);
    if (const std::string text = describeStart(startStatus); !text.empty()) {
        console.tell(text);
    }
}

std::vector<std::string> MeasuredRun::findHistoryFiles() const {
    std::vector<std::string> files;
    for (const auto& agent : management.getSuperAgents()) {
        if (!agent->isRunPrepared()) {
            continue;
        }
        SV::String definition;
        for (const SubAgentSection& section : sectionsOf(agent->getDefinitionText(definition).view())) {
            const auto subAgent = agent->findSubAgentByName(SV::String(section.name));
            std::error_code status;
            if (!section.historyFile.empty() && subAgent != nullptr && subAgent->hasHistory(true) &&
                std::filesystem::exists(section.historyFile, status)) {
                files.push_back(section.historyFile);
            }
        }
    }
    return files;
}

RunResults MeasuredRun::finish() {
    ResultCollector collector(repository, options);
    RunResults results;
    for (const auto& agent : management.getSuperAgents()) {
        collector.collect(*agent);
        for (const std::string& note :
             notesOnMissingMeasures(*agent, options.scaled.has_value(), repository.library())) {
            console.tell(note);
            results.areGapsExplained = true;
        }
    }
    results.historyFiles = findHistoryFiles();
    results.tables = std::move(collector.tables());
    results.document.analysis = options.analysis;
    results.document.simStart = startStatus;
    results.document.agents = std::move(collector.agents());
    results.document.simEnd = management.simEnd();
    for (const SV::BoxRecord& box : SV::BoxDesk::GetGlobal().getRecords()) {
        results.document.messages.push_back(fmt::format("0x{:X}", box.message.value));
    }
    for (const InternalError& error : InternalErrorLog::GetGlobal().getErrors()) {
        results.document.internalErrors.push_back(error.module);
    }
    return results;
}

}  // namespace mero
