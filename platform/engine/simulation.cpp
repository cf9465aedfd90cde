#include "platform/engine/simulation.h"

#include <fmt/format.h>

#include "platform/engine/mixing.h"
#include "platform/engine/process_runner.h"

namespace mero {

namespace {

/// Up to here every whole second can be told apart in the clock.
constexpr double TimeLimit = 0x1p53;
/// A run that is only limited by time ends after so many instances that take no time.
constexpr std::uint64_t TimelessLimit = 100'000;
constexpr std::uint64_t ProgressInterval = 1000;

std::uint64_t seedOf(std::uint64_t seed, std::uint64_t replication) {
    return replication == 0 ? seed : mixBits(seed ^ mixBits(replication));
}

/// The instances of one run, and why it ends.
class PathRun {
public:
    PathRun(const SimulationSettings& runSettings, const ProcessGraph& graph,
            ControlComponent& controlComponent, const RunProgress& runProgress, std::uint64_t seed)
        : settings(runSettings),
          mains(graph.mainModels()),
          control(controlComponent),
          progress(runProgress),
          firstEvent(controlComponent.eventCount()),
          runner(graph, seed, controlComponent, [this](double time) { return mayGoOn(time); }) {}

    RunSummary run() {
        sendRunEvent(EventRunStart);
        for (std::uint64_t round = 0; !ended && (settings.instances == 0 || round < settings.instances);
             ++round) {
            for (std::size_t index = 0; index < mains.size() && !ended; ++index) {
                runInstance(mains[index]);
            }
        }
        sendRunEvent(EventRunEnd);
        summary.endTime = lastTime;
        summary.events = control.eventCount() - firstEvent;
        summary.fingerprint = control.fingerprint();
        return std::move(summary);
    }

private:
    void runInstance(std::uint32_t model) {
        const double begin = runner.clock();
        const std::uint64_t eventsBefore = control.eventCount();
        switch (runner.run(model)) {
            case ProcessRunner::Outcome::Finished:
                ++summary.started;
                ++summary.finished;
                break;
            case ProcessRunner::Outcome::Dropped:
                ++summary.started;
                ++summary.dropped;
                ++summary.reports[runner.dropReason()];
                break;
            case ProcessRunner::Outcome::Stopped: {
                const std::uint64_t begun = control.eventCount() > eventsBefore ? 1 : 0;
                summary.started += begun;
                summary.unfinished += begun;
                ended = true;
                break;
            }
        }
        timeless = runner.clock() > begin ? 0 : timeless + 1;
        if (settings.instances == 0 && timeless >= TimelessLimit) {
            summary.reports["the instances take no time, so that the end of the run is never reached"] =
                timeless;
            ended = true;
        }
    }

    bool mayGoOn(double time) {
        if (!(time < TimeLimit)) {
            ++summary.reports["the run takes more time than can be counted in seconds"];
            return false;
        }
        const std::int64_t seconds = wholeSeconds(time);
        if (settings.until && seconds > *settings.until) {
            lastTime = *settings.until;
            return false;
        }
        lastTime = seconds;
        if (progress && control.eventCount() >= nextProgress) {
            nextProgress = control.eventCount() + ProgressInterval;
            summary.cancelled = !progress(summary.started, seconds);
        }
        return !summary.cancelled;
    }

    void sendRunEvent(MeroEventCode code) {
        SimEvent event;
        event.code = code;
        event.time = lastTime;
        control.send(event);
    }

    const SimulationSettings& settings;
    const std::vector<std::uint32_t>& mains;
    ControlComponent& control;
    const RunProgress& progress;
    std::uint64_t firstEvent;
    ProcessRunner runner;
    RunSummary summary;
    std::uint64_t nextProgress = 0;
    std::uint64_t timeless = 0;
    std::int64_t lastTime = 0;
    bool ended = false;
};

}  // namespace

Result<Simulation> Simulation::prepare(const Repository& repository, const SimulationSettings& settings) {
    if (settings.analysis != Analysis::Path) {
        return Error{"only path analysis can be simulated"};
    }
    if (settings.models.empty()) {
        return Error{"there is no model to simulate"};
    }
    if (settings.instances == 0 && !settings.until) {
        return Error{"a number of instances or an end of the run is needed"};
    }
    if (settings.until && *settings.until < 0) {
        return Error{"the end of the run lies before its start"};
    }
    Result<ProcessGraph> graph = ProcessGraph::compile(repository, settings.models, settings.timeBase);
    if (!graph) {
        return graph.error();
    }
    return Simulation(settings, std::move(graph.value()));
}

RunSummary Simulation::run(ControlComponent& control, const RunProgress& progress,
                           std::uint64_t replication) const {
    return PathRun(settings, graph, control, progress, seedOf(settings.seed, replication)).run();
}

}  // namespace mero
