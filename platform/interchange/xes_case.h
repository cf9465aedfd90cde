#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <unordered_map>
#include <vector>

#include "platform/interchange/xes_rows.h"
#include "platform/interchange/xes_survey.h"

namespace mero {

/// An event of one case with its names looked up.
struct XesCaseEvent {
    std::optional<std::int64_t> time;   ///< milliseconds
    std::optional<std::int64_t> start;  ///< of an interval event
    MeroId object = MeroNoId;
    MeroId worker = MeroNoId;
    XesTransition transition = XesTransition::None;
};

/// Makes the rows of a case: its start, passes and end. Work ends pair with work starts of the same activity,
/// first in, first out. Each work period is closed within its case, with the worker who opened it.
class XesCase {
public:
    /// `timeOfNothing` is the time of a case in which no event has one; with `everyEventIsPass` transitions
    /// aren't looked at.
    XesCase(std::int64_t timeOfNothing, bool everyEventIsPass)
        : fallbackTime(timeOfNothing), ignoreTransitions(everyEventIsPass) {}

    /// Rows in order of time, times still absolute. `events` are in the order of the log and come back
    /// sorted; an empty case has no rows.
    const std::vector<XesRow>& rowsOf(std::vector<XesCaseEvent>& events, std::uint32_t caseNumber);

private:
    enum class PassState { Waiting, Working, Suspended };
    struct Pass {
        std::uint32_t number = 0;
        MeroId object = MeroNoId;
        MeroId worker = MeroNoId;
        std::int64_t since = 0;  ///< time of its last row
        std::size_t period = 0;  ///< row before the one that opened its last work period
        PassState state = PassState::Waiting;
    };
    struct Passes {
        std::deque<Pass> waiting;  ///< reached, not at work
        std::deque<Pass> working;  ///< or suspended
    };

    void fillTimes(std::vector<XesCaseEvent>& events) const;
    void play(const XesCaseEvent& event);
    void playPass(const XesCaseEvent& event);
    void assign(const XesCaseEvent& event);
    void begin(const XesCaseEvent& event);
    void suspendOrResume(const XesCaseEvent& event, bool suspend);
    void complete(const XesCaseEvent& event);
    void drop(const XesCaseEvent& event);

    Pass reach(const XesCaseEvent& event, std::int64_t time);
    void nameWorker(Pass& pass, MeroId worker);
    void openPeriod(std::int32_t code, Pass& pass, MeroId worker, std::int64_t time);
    void closePeriod(std::int32_t code, Pass& pass, MeroId worker, std::int64_t time);
    /// Suspends the pass if it is at work.
    void breakOff(Pass& pass, std::int64_t time);
    void breakOffAll();

    void add(std::int32_t code, Pass& pass, std::int64_t time);
    void settleWorkers();
    void frame(std::uint32_t caseNumber);

    std::int64_t fallbackTime;
    bool ignoreTransitions;
    std::vector<XesRow> rows;
    std::unordered_map<MeroId, Passes> open;
    std::uint32_t passCount = 0;
    std::int64_t lastTime = 0;  ///< of the case
    bool aborted = false;
};

}  // namespace mero
