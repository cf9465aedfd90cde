#include "platform/engine/path_run.h"

#include "platform/engine/run_limits.h"

namespace mero {

PathRun::PathRun(const SimulationSettings& runSettings, const ProcessGraph& graph, const StaffPlan* staffPlan,
                 ControlComponent& controlComponent, const RunProgress& runProgress, std::uint64_t seed)
    : settings(runSettings),
      mains(graph.mainModels()),
      control(controlComponent),
      progress(runProgress),
      firstEvent(controlComponent.eventCount()),
      runner(graph, seed, controlComponent, *this) {
    if (staffPlan != nullptr) {
        staff.emplace(*staffPlan, graph, seed);
        runner.nameStaff(*staff);
    }
}

RunSummary PathRun::run() {
    sendRunEvent(EventRunStart);
    for (std::uint64_t round = 0; !ended && (settings.instances == 0 || round < settings.instances);
         ++round) {
        for (std::size_t index = 0; index < mains.size() && !ended; ++index) {
            runInstance(mains[index]);
        }
    }
    sendRunEvent(EventRunEnd);
    takeCounts(runner.counts(), summary);
    summary.endTime = lastTime;
    summary.events = control.eventCount() - firstEvent;
    summary.fingerprint = control.fingerprint();
    return std::move(summary);
}

void PathRun::runInstance(std::uint32_t model) {
    const double begin = runner.clock();
    runner.clearPlans();
    runner.start(model);
    while (runner.counts().live() != 0 && runner.hasPlan() && !runner.isStopped()) {
        runner.step();
    }
    ended = runner.isStopped();
    timeless = runner.clock() > begin ? 0 : timeless + 1;
    if (settings.instances == 0 && timeless >= RunLimits::Timeless) {
        summary.reports[RunLimits::TimelessReport] = timeless;
        ended = true;
    }
}

bool PathRun::mayGoOn(double time) {
    if (!(time < RunLimits::Time)) {
        ++summary.reports[RunLimits::TimeReport];
        return false;
    }
    const std::int64_t seconds = wholeSeconds(time);
    if (settings.until && seconds > *settings.until) {
        lastTime = *settings.until;
        return false;
    }
    lastTime = seconds;
    if (progress && control.eventCount() >= nextProgress) {
        nextProgress = control.eventCount() + RunLimits::ProgressInterval;
        summary.cancelled = !progress(runner.counts().started, seconds);
    }
    return !summary.cancelled;
}

void PathRun::sendRunEvent(MeroEventCode code) {
    SimEvent event;
    event.code = code;
    event.time = lastTime;
    control.send(event);
}

}  // namespace mero
