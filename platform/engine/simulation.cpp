#include "platform/engine/simulation.h"

#include "platform/engine/path_run.h"
#include "platform/engine/work_load_run.h"
#include "platform/toolkit/mixing.h"

namespace mero {

namespace {

Result<void> checkSettings(const SimulationSettings& settings) {
    if (settings.models.empty()) {
        return Error{"there is no model to simulate"};
    }
    if (settings.instances == 0 && !settings.until) {
        return Error{"a number of instances or an end of the run is needed"};
    }
    if (settings.until && *settings.until < 0) {
        return Error{"the end of the run lies before its start"};
    }
    if (settings.warmUp != 0 && settings.analysis != Analysis::StaticWorkLoad) {
        return Error{"only a static work load has a warm-up"};
    }
    if (settings.warmUp < 0 || (settings.until && settings.warmUp > *settings.until)) {
        return Error{"the warm-up has to end before the run does"};
    }
    return {};
}

void append(std::vector<std::string>& all, const std::vector<std::string>& more) {
    all.insert(all.end(), more.begin(), more.end());
}

}  // namespace

std::uint64_t seedOfReplication(std::uint64_t seed, std::uint64_t replication) {
    return replication == 0 ? seed : mixBits(seed ^ mixBits(replication));
}

Simulation::Simulation(SimulationSettings runSettings, ProcessGraph processGraph)
    : settings(std::move(runSettings)), graph(std::move(processGraph)) {
    append(oddities, graph.problems());
}

Result<Simulation> Simulation::prepare(Repository& repository, const SimulationSettings& settings) {
    if (const Result<void> checked = checkSettings(settings); !checked) {
        return checked.error();
    }
    Result<ProcessGraph> graph =
        ProcessGraph::compile(repository, settings.models, settings.timeBase,
                              isWorkLoad(settings.analysis) ? MessageUse::Act : MessageUse::PassBy);
    if (!graph) {
        return graph.error();
    }
    Simulation simulation(settings, std::move(graph.value()));
    if (settings.analysis == Analysis::Path) {
        return simulation;
    }
    Result<StaffPlan> staff =
        StaffPlan::compile(repository, simulation.graph, settings.environment, settings.startOffset);
    if (!staff) {
        return staff.error();
    }
    simulation.staff = std::move(staff.value());
    append(simulation.oddities, simulation.staff->problems());
    if (isWorkLoad(settings.analysis)) {
        Result<ArrivalPlan> arrivals =
            ArrivalPlan::compile(repository, simulation.graph, settings.startOffset);
        if (!arrivals) {
            return arrivals.error();
        }
        simulation.arrivals = std::move(arrivals.value());
        append(simulation.oddities, simulation.arrivals->problems());
    }
    return simulation;
}

RunSummary Simulation::run(ControlComponent& control, const RunProgress& progress,
                           std::uint64_t replication) const {
    const std::uint64_t seed = seedOfReplication(settings.seed, replication);
    if (isWorkLoad(settings.analysis)) {
        return WorkLoadRun(settings, graph, *staff, *arrivals, control, progress, seed).run();
    }
    return PathRun(settings, graph, staff ? &*staff : nullptr, control, progress, seed).run();
}

}  // namespace mero
