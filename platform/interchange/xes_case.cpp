#include "platform/interchange/xes_case.h"

#include <algorithm>

#include "component/host/simulation.h"

namespace mero {

const std::vector<XesRow>& XesCase::rowsOf(std::vector<XesCaseEvent>& events, std::uint32_t caseNumber) {
    rows.clear();
    open.clear();
    passCount = 0;
    aborted = false;
    if (events.empty()) {
        return rows;
    }
    fillTimes(events);
    std::stable_sort(events.begin(), events.end(), [](const XesCaseEvent& left, const XesCaseEvent& right) {
        return *left.time < *right.time;
    });
    add(EventProcessStart, {}, *events.front().time, 0);
    lastTime = *events.back().time;
    for (const XesCaseEvent& event : events) {
        if (event.transition == XesTransition::AbortCase && !ignoreTransitions) {
            aborted = true;
            lastTime = *event.time;
            break;
        }
        play(event);
    }
    const XesTransition last = events.back().transition;
    aborted =
        aborted || (!ignoreTransitions && (last == XesTransition::Abort || last == XesTransition::Withdraw));
    frame(caseNumber);
    return rows;
}

/// An event without time is taken to have happened with the one before it, else with the one after it.
void XesCase::fillTimes(std::vector<XesCaseEvent>& events) const {
    const auto timed = std::find_if(events.begin(), events.end(),
                                    [](const XesCaseEvent& event) { return event.time.has_value(); });
    std::int64_t time = timed != events.end() ? *timed->time : fallbackTime;
    for (XesCaseEvent& event : events) {
        time = event.time.value_or(time);
        event.time = time;
    }
}

void XesCase::play(const XesCaseEvent& event) {
    if (ignoreTransitions) {
        playPass(event);
        return;
    }
    switch (event.transition) {
        case XesTransition::Schedule:
            open[event.object].waiting.push_back(reach(event, *event.time));
            break;
        case XesTransition::Assign:
        case XesTransition::Reassign:
            assign(event);
            break;
        case XesTransition::Start:
            begin(event);
            break;
        case XesTransition::Suspend:
            suspendOrResume(event, true);
            break;
        case XesTransition::Resume:
            suspendOrResume(event, false);
            break;
        case XesTransition::None:
        case XesTransition::Complete:
            complete(event);
            break;
        case XesTransition::Skip:
        case XesTransition::Withdraw:
        case XesTransition::Abort:
            drop(event);
            break;
        case XesTransition::AbortCase:
        case XesTransition::Unknown:
            break;
    }
}

/// A pass of which nothing is known but its end and perhaps its start.
void XesCase::playPass(const XesCaseEvent& event) {
    const std::int64_t start = std::min(event.start.value_or(*event.time), *event.time);
    Pass pass = reach(event, start);
    startWork(pass, event, start);
    add(EventWorkEnd, event, *event.time, pass.number);
}

void XesCase::assign(const XesCaseEvent& event) {
    Passes& passes = open[event.object];
    if (passes.waiting.empty() && passes.working.empty()) {
        passes.waiting.push_back(reach(event, *event.time));
    }
    auto& queue = passes.waiting.empty() ? passes.working : passes.waiting;
    const auto unassigned =
        std::find_if(queue.begin(), queue.end(), [](const Pass& pass) { return pass.worker == MeroNoId; });
    Pass& pass = unassigned != queue.end() ? *unassigned : queue.front();
    if (event.worker != MeroNoId) {
        pass.worker = event.worker;
        add(EventExecutiveAssigned, event, *event.time, pass.number);
    }
}

void XesCase::begin(const XesCaseEvent& event) {
    Passes& passes = open[event.object];
    Pass pass;
    if (passes.waiting.empty()) {
        pass = reach(event, *event.time);
    } else {
        pass = passes.waiting.front();
        passes.waiting.pop_front();
    }
    startWork(pass, event, *event.time);
    passes.working.push_back(pass);
}

void XesCase::suspendOrResume(const XesCaseEvent& event, bool suspend) {
    auto& working = open[event.object].working;
    const auto found = std::find_if(working.begin(), working.end(),
                                    [suspend](const Pass& pass) { return pass.suspended != suspend; });
    if (found != working.end()) {
        found->suspended = suspend;
        add(suspend ? EventWorkSuspended : EventWorkResumed, event, *event.time, found->number);
    }
}

void XesCase::complete(const XesCaseEvent& event) {
    Passes& passes = open[event.object];
    if (!passes.working.empty()) {
        const Pass pass = passes.working.front();
        passes.working.pop_front();
        if (pass.suspended) {
            add(EventWorkResumed, event, *event.time, pass.number);
        }
        add(EventWorkEnd, event, *event.time, pass.number);
        return;
    }
    if (passes.waiting.empty()) {
        playPass(event);
        return;
    }
    Pass pass = passes.waiting.front();
    passes.waiting.pop_front();
    startWork(pass, event, *event.time);
    add(EventWorkEnd, event, *event.time, pass.number);
}

/// There is no event for a pass that is given up: the process simply goes on without it.
void XesCase::drop(const XesCaseEvent& event) {
    Passes& passes = open[event.object];
    const bool working = event.transition == XesTransition::Abort && !passes.working.empty();
    auto& queue = working ? passes.working : passes.waiting;
    if (!queue.empty()) {
        queue.pop_front();
    }
}

XesCase::Pass XesCase::reach(const XesCaseEvent& event, std::int64_t time) {
    Pass pass;
    pass.number = ++passCount;
    XesCaseEvent unmanned = event;
    unmanned.worker = MeroNoId;
    add(EventObjectReached, unmanned, time, pass.number);
    return pass;
}

void XesCase::startWork(Pass& pass, const XesCaseEvent& event, std::int64_t time) {
    if (event.worker != MeroNoId && pass.worker != event.worker) {
        pass.worker = event.worker;
        add(EventExecutiveAssigned, event, time, pass.number);
    }
    add(EventWorkStart, event, time, pass.number);
}

void XesCase::add(std::int32_t code, const XesCaseEvent& event, std::int64_t time, std::uint32_t pass) {
    XesRow row;
    row.time = time;
    row.code = code;
    row.object = event.object;
    row.worker = event.worker;
    row.pass = pass;
    rows.push_back(row);
}

/// Puts the rows in order between the start of the case, which may be that of an interval, and its end.
void XesCase::frame(std::uint32_t caseNumber) {
    const auto isEarlier = [](const XesRow& left, const XesRow& right) { return left.time < right.time; };
    rows.front().time = std::min_element(rows.begin(), rows.end(), isEarlier)->time;
    std::stable_sort(rows.begin(), rows.end(), isEarlier);
    add(aborted ? EventInstanceDropped : EventProcessEnd, {}, lastTime, 0);
    for (std::size_t index = 0; index < rows.size(); ++index) {
        rows[index].caseNumber = caseNumber;
        rows[index].sequence = static_cast<std::uint32_t>(index);
    }
}

}  // namespace mero
