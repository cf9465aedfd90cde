#include "apps/workbench/run_session.h"

#include <array>

#include "apps/mero/run_settings.h"
#include "component/agents/atomar_agent.h"
#include "component/agents/super_agent.h"
#include "component/display/agent_result_windows.h"
#include "platform/engine/simulation.h"

namespace mero {

namespace {

SimulationSettings settingsOf(const RunRequest& request) {
    SimulationSettings settings;
    settings.analysis = request.analysis;
    settings.models = request.models;
    settings.environment = request.environment;
    settings.instances = request.instances;
    settings.until = request.until;
    settings.startOffset = request.start ? secondsOfYear(*request.start) : 0;
    settings.seed = request.seed;
    settings.timeBase = request.timeBase;
    return settings;
}

/// The values of the one column of a table, by object.
std::map<MeroId, double> valuesOf(const MeroAgentBrowserObjects& table) {
    std::map<MeroId, double> values;
    constexpr int OnlyColumn = 1;
    for (int row = 0; row < table.getNumberOfRows(); ++row) {
        if (const auto number = table.getNumber(row, OnlyColumn)) {
            values[table.getObjectOfRow(row)] += *number;
        }
    }
    return values;
}

}  // namespace

Result<RunSummary> RunSession::run(const RunRequest& request, const RunProgress& progress) {
    for (const MeroId model : request.models) {
        if (const Result<void> loaded = repository.setLoaded(model, true); !loaded) {
            return loaded.error();
        }
    }
    const Result<Simulation> simulation = Simulation::prepare(repository, settingsOf(request));
    if (!simulation) {
        return simulation.error();
    }
    end();
    timeBase = request.timeBase;
    oddities = simulation.value().problems();
    control = std::make_unique<ControlComponent>();
    ISortedSet<MeroId> models;
    models.insertRange(request.models.begin(), request.models.end());
    const int algorithm = static_cast<int>(request.analysis);
    status = management.simStart(algorithm, control.get(), simulationAttributes(), models,
                                 request.environment, request.start ? &*request.start : nullptr,
                                 timeBase.daysPerYear, timeBase.hoursPerDay);
    return simulation.value().run(*control, progress);
}

std::vector<RunMeasure> RunSession::measures(const std::string& context) {
    std::vector<RunMeasure> found;
    if (!hasRun()) {
        return found;
    }
    constexpr double Unscaled = 1.0;
    MeroResultRequest request;
    request.scale = Unscaled;
    for (const auto& agent : management.getSuperAgents()) {
        if (!agent->isRunPrepared()) {
            continue;
        }
        const MeroAgentResultWindows windows(*agent);
        SV::String agentName;
        agent->getName(agentName);
        for (const auto& subAgent : agent->getSubAgents()) {
            MeroAgentResultSet* const set = subAgent->getResultSet(request);
            MeroAgentBrowserObjects table;
            bool isEmpty = true;
            if (set == nullptr || !set->isShown(request.scaled) ||
                !windows.fillBrowser(table, DisplayTotal, isEmpty, {set}, Unscaled) || isEmpty) {
                continue;
            }
            SV::String name;
            subAgent->getName(name);
            RunMeasure measure{agent->getInstanceId(), {}, subAgent->getAgentType() == AgentTypeFrequency};
            measure.overlay.agent = agentName.view();
            measure.overlay.measure = name.view();
            measure.overlay.unit = set->getResultKind() == ResultKindTime ? MeasureOverlay::Unit::Seconds
                                                                          : MeasureOverlay::Unit::Number;
            measure.overlay.context = context;
            measure.overlay.daysPerYear = timeBase.daysPerYear;
            measure.overlay.hoursPerDay = timeBase.hoursPerDay;
            measure.overlay.values = valuesOf(table);
            found.push_back(std::move(measure));
        }
    }
    return found;
}

int RunSession::showResults(SV::Window* parent) {
    return hasRun() ? management.showResults(parent) : static_cast<int>(StatusNoRun);
}

void RunSession::end() {
    if (hasRun()) {
        static_cast<void>(management.simEnd());
        control.reset();
    }
}

}  // namespace mero
