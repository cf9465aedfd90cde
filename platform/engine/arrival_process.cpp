#include "platform/engine/arrival_process.h"

#include <algorithm>
#include <limits>

namespace mero {

ArrivalProcess::ArrivalProcess(const ArrivalPlan& arrivalPlan, const ProcessGraph& graph,
                               std::uint64_t runSeed, std::uint64_t instancesOfModel)
    : plan(arrivalPlan), limit(instancesOfModel), arrivals(graph.mainModels().size(), 0) {
    for (const ArrivalPlan::Source& source : plan.sources()) {
        const std::string& name = graph.models()[source.model].nodes[source.node].streamName;
        states.push_back({RandomStream(runSeed, "arrival/" + name),
                          source.calendar ? source.calendar->movedIntoWork(0.0) : 0.0});
    }
    findNext();
}

ArrivalProcess::Arrival ArrivalProcess::take() {
    const ArrivalPlan::Source& source = plan.sources()[nextSource];
    if (++arrivals[source.main] == limit) {
        for (std::size_t each = 0; each < states.size(); ++each) {
            if (plan.sources()[each].main == source.main) {
                states[each].time = std::numeric_limits<double>::infinity();
            }
        }
    } else {
        moveOn(nextSource);
    }
    findNext();
    return {source.model, source.node};
}

void ArrivalProcess::moveOn(std::size_t index) {
    const ArrivalPlan::Source& source = plan.sources()[index];
    State& state = states[index];
    if (!source.gap) {
        state.time = source.calendar ? source.calendar->afterWork(state.time, source.workGap)
                                     : state.time + source.workGap;
        return;
    }
    state.time += std::max(0.0, source.gap->sample(state.random));
    if (source.calendar) {
        state.time = source.calendar->movedIntoWork(state.time);
    }
}

void ArrivalProcess::findNext() {
    nextSource = 0;
    for (std::size_t each = 1; each < states.size(); ++each) {
        if (states[each].time < states[nextSource].time) {
            nextSource = each;
        }
    }
    next = states.empty() ? std::numeric_limits<double>::infinity() : states[nextSource].time;
}

}  // namespace mero
