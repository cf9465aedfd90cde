#include "platform/engine/work_load_run.h"

#include <algorithm>
#include <limits>

#include "platform/engine/run_limits.h"

namespace mero {

namespace {

constexpr double Never = std::numeric_limits<double>::infinity();
/// Who isn't served in that time has to wait for workers and resources that are never there together.
constexpr double LongestIdleness = 2.0 * static_cast<double>(WorkingCalendar::SecondsPerCycle);

}  // namespace

WorkLoadRun::WorkLoadRun(const SimulationSettings& runSettings, const ProcessGraph& graph,
                         const StaffPlan& staffPlan, const ArrivalPlan& arrivalPlan,
                         ControlComponent& controlComponent, const RunProgress& runProgress,
                         std::uint64_t seed)
    : settings(runSettings),
      control(controlComponent),
      progress(runProgress),
      firstEvent(controlComponent.eventCount()),
      workforce(staffPlan),
      arrivals(arrivalPlan, graph, seed, runSettings.instances),
      runner(graph, seed, controlComponent, *this),
      observationTime(runSettings.warmUp > 0 ? static_cast<double>(runSettings.warmUp) : Never) {
    runner.contendFor(workforce);
    if (isWarmingUp()) {
        runner.keepSilent();
    }
}

RunSummary WorkLoadRun::run() {
    const double end = settings.until ? static_cast<double>(*settings.until) : Never;
    if (!isWarmingUp()) {
        sendRunEvent(EventRunStart, 0.0);
    }
    while (!ended && !runner.isStopped()) {
        double time = Never;
        const Next next = chooseNext(time);
        if (next == Next::Nothing) {
            break;
        }
        if (next == Next::Border && isIdleForEver(time)) {
            runner.setClock(settings.until ? end : lastDeed);
            break;
        }
        if (time > end) {
            runner.setClock(end);
            break;
        }
        goOn(next);
    }
    if (isWarmingUp()) {
        sendRunEvent(EventRunStart, runner.clock());
        ++summary.reports[RunLimits::WarmUpReport];
    }
    summary.endTime = wholeSeconds(runner.clock());
    sendRunEvent(EventRunEnd, runner.clock());
    takeCounts(runner.counts(), summary);
    if (!ended && !summary.cancelled && !settings.until && summary.unfinished != 0) {
        summary.reports["an instance waits for something that never comes"] += summary.unfinished;
    }
    summary.events = control.eventCount() - firstEvent;
    summary.fingerprint = control.fingerprint();
    return std::move(summary);
}

/// Borders come first, so that nobody is given work at the very end of a shift.
WorkLoadRun::Next WorkLoadRun::chooseNext(double& time) const {
    const double plan = runner.hasPlan() ? runner.nextTime() : Never;
    const double arrival = arrivals.nextTime();
    if (isDone()) {
        return Next::Nothing;
    }
    time = std::min({workforce.nextBorder(), observationTime, arrival, plan});
    return time == Never                    ? Next::Nothing
           : time == workforce.nextBorder() ? Next::Border
           : time == observationTime        ? Next::Observation
           : time == arrival                ? Next::Arrival
                                            : Next::Plan;
}

bool WorkLoadRun::isDone() const {
    return runner.counts().live() == 0 && arrivals.nextTime() == Never;
}

void WorkLoadRun::goOn(Next next) {
    switch (next) {
        case Next::Border:
            runner.crossBorders();
            return;
        case Next::Observation:
            beginObservation();
            break;
        case Next::Arrival:
            arrive();
            break;
        case Next::Plan:
            runner.step();
            break;
        case Next::Nothing:
            break;
    }
    lastDeed = runner.clock();
}

void WorkLoadRun::arrive() {
    const double time = arrivals.nextTime();
    timeless = time > runner.clock() ? 0 : timeless + 1;
    runner.setClock(time);
    const ArrivalProcess::Arrival arrival = arrivals.take();
    runner.start(arrival.model, arrival.node);
    if (settings.instances == 0 && timeless >= RunLimits::Timeless) {
        summary.reports["instances arrive at the same time without end"] = timeless;
        ended = true;
    }
}

/// To the observers the run begins here.
void WorkLoadRun::beginObservation() {
    runner.setClock(observationTime);
    observationTime = Never;
    sendRunEvent(EventRunStart, runner.clock());
    runner.announceLive();
}

bool WorkLoadRun::isIdleForEver(double time) const {
    const bool waits = runner.hasPlan() || arrivals.nextTime() != Never || isWarmingUp();
    return !waits && (!workforce.isWanted() || time > lastDeed + LongestIdleness);
}

const char* WorkLoadRun::exceededLimit(double time) const {
    return !(time < RunLimits::Time)                                  ? RunLimits::TimeReport
           : runner.counts().startedAtOnce > RunLimits::StartedAtOnce ? RunLimits::StartedAtOnceReport
           : !settings.until && runner.counts().generations > RunLimits::Generations
               ? RunLimits::GenerationsReport
               : nullptr;
}

bool WorkLoadRun::mayGoOn(double time) {
    if (const char* const report = exceededLimit(time)) {
        ++summary.reports[report];
        return false;
    }
    if (progress && happened++ % RunLimits::ProgressInterval == 0) {
        summary.cancelled = !progress(runner.counts().started, wholeSeconds(time));
    }
    return !summary.cancelled;
}

void WorkLoadRun::sendRunEvent(MeroEventCode code, double time) {
    SimEvent event;
    event.code = code;
    event.time = wholeSeconds(time);
    control.send(event);
}

}  // namespace mero
