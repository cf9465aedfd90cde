#include "platform/interchange/xes_case.h"

#include <algorithm>
#include <utility>

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
    Pass none;
    add(EventProcessStart, none, *events.front().time);
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
    openPeriod(EventWorkStart, pass, event.worker, start);
    closePeriod(EventWorkEnd, pass, event.worker, *event.time);
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
    if (event.worker == MeroNoId || event.worker == pass.worker) {
        return;
    }
    if (pass.state != PassState::Working) {
        pass.worker = event.worker;
        add(EventExecutiveAssigned, pass, *event.time);
    } else if (pass.worker == MeroNoId) {
        nameWorker(pass, event.worker);
    } else {
        closePeriod(EventWorkSuspended, pass, MeroNoId, *event.time);
        openPeriod(EventWorkResumed, pass, event.worker, *event.time);
    }
}

void XesCase::begin(const XesCaseEvent& event) {
    Passes& passes = open[event.object];
    if (passes.waiting.empty()) {
        passes.working.push_back(reach(event, *event.time));
    } else {
        passes.working.push_back(passes.waiting.front());
        passes.waiting.pop_front();
    }
    openPeriod(EventWorkStart, passes.working.back(), event.worker, *event.time);
}

void XesCase::suspendOrResume(const XesCaseEvent& event, bool suspend) {
    const PassState wanted = suspend ? PassState::Working : PassState::Suspended;
    auto& working = open[event.object].working;
    const auto found = std::find_if(working.begin(), working.end(),
                                    [wanted](const Pass& pass) { return pass.state == wanted; });
    if (found == working.end()) {
        return;
    }
    if (suspend) {
        closePeriod(EventWorkSuspended, *found, event.worker, *event.time);
    } else {
        openPeriod(EventWorkResumed, *found, event.worker, *event.time);
    }
}

void XesCase::complete(const XesCaseEvent& event) {
    Passes& passes = open[event.object];
    if (passes.working.empty() && passes.waiting.empty()) {
        playPass(event);
        return;
    }
    auto& queue = passes.working.empty() ? passes.waiting : passes.working;
    Pass pass = queue.front();
    queue.pop_front();
    if (pass.state == PassState::Waiting) {
        const std::int64_t start = event.start.value_or(*event.time);
        openPeriod(EventWorkStart, pass, event.worker, std::clamp(start, pass.since, *event.time));
    } else if (pass.state == PassState::Suspended) {
        openPeriod(EventWorkResumed, pass, event.worker, *event.time);
    }
    closePeriod(EventWorkEnd, pass, event.worker, *event.time);
}

/// There is no event for a pass that is given up: its work is suspended for good, and the process goes on.
void XesCase::drop(const XesCaseEvent& event) {
    Passes& passes = open[event.object];
    const bool working = event.transition == XesTransition::Abort && !passes.working.empty();
    auto& queue = working ? passes.working : passes.waiting;
    if (!queue.empty()) {
        breakOff(queue.front(), *event.time);
        queue.pop_front();
    }
}

XesCase::Pass XesCase::reach(const XesCaseEvent& event, std::int64_t time) {
    Pass pass;
    pass.number = ++passCount;
    pass.object = event.object;
    add(EventObjectReached, pass, time);
    return pass;
}

/// No worker: the pass stays with the one it has.
void XesCase::nameWorker(Pass& pass, MeroId worker) {
    if (worker == MeroNoId) {
        return;
    }
    pass.worker = worker;
    if (pass.state == PassState::Working) {
        rows[pass.period].worker = rows[pass.period + 1].worker = worker;
    }
}

/// An assignment stands before each period, since its worker may change until it ends; see `settleWorkers`.
void XesCase::openPeriod(std::int32_t code, Pass& pass, MeroId worker, std::int64_t time) {
    nameWorker(pass, worker);
    pass.state = PassState::Working;
    pass.period = rows.size();
    add(EventExecutiveAssigned, pass, time);
    add(code, pass, time);
}

/// A period is wholly that of the worker who is named at its end.
void XesCase::closePeriod(std::int32_t code, Pass& pass, MeroId worker, std::int64_t time) {
    nameWorker(pass, worker);
    pass.state = PassState::Suspended;
    add(code, pass, time);
}

void XesCase::breakOff(Pass& pass, std::int64_t time) {
    if (pass.state == PassState::Working) {
        closePeriod(EventWorkSuspended, pass, MeroNoId, time);
    }
}

/// No work outlives its case.
void XesCase::breakOffAll() {
    std::vector<Pass*> passes;
    for (auto& [object, ofObject] : open) {
        for (Pass& pass : ofObject.working) {
            passes.push_back(&pass);
        }
    }
    std::sort(passes.begin(), passes.end(),
              [](const Pass* left, const Pass* right) { return left->number < right->number; });
    for (Pass* const pass : passes) {
        breakOff(*pass, lastTime);
    }
}

/// Gives work that began before anybody was named to the first who is, and drops assignments to nobody and to
/// workers who have the pass already.
void XesCase::settleWorkers() {
    std::vector<MeroId> workers(passCount + 1, MeroNoId);
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        if (row->worker != MeroNoId) {
            workers[row->pass] = row->worker;
        } else if (row->code != EventObjectReached) {
            row->worker = workers[row->pass];
        }
    }
    workers.assign(workers.size(), MeroNoId);
    std::erase_if(rows, [&workers](const XesRow& row) {
        return row.code == EventExecutiveAssigned &&
               std::exchange(workers[row.pass], row.worker) == row.worker;
    });
}

void XesCase::add(std::int32_t code, Pass& pass, std::int64_t time) {
    pass.since = time;
    XesRow row;
    row.time = time;
    row.code = code;
    row.object = pass.object;
    row.worker = pass.worker;
    row.pass = pass.number;
    rows.push_back(row);
}

/// Puts the rows in order between the start of the case, which may be that of an interval, and its end.
void XesCase::frame(std::uint32_t caseNumber) {
    breakOffAll();
    settleWorkers();
    const auto isEarlier = [](const XesRow& left, const XesRow& right) { return left.time < right.time; };
    rows.front().time = std::min_element(rows.begin(), rows.end(), isEarlier)->time;
    std::stable_sort(rows.begin(), rows.end(), isEarlier);
    Pass none;
    add(aborted ? EventInstanceDropped : EventProcessEnd, none, lastTime);
    for (std::size_t index = 0; index < rows.size(); ++index) {
        rows[index].caseNumber = caseNumber;
        rows[index].sequence = static_cast<std::uint32_t>(index);
    }
}

}  // namespace mero
