#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <optional>
#include <string>

#include "platform/interchange/iso_time.h"
#include "platform/interchange/xes_reader.h"
#include "platform/support/result.h"

namespace mero {

/// The words of the standard transactional life cycle (IEEE 1849, extension Lifecycle).
enum class XesTransition {
    None,  ///< the event has no word
    Schedule,
    Assign,
    Reassign,
    Start,
    Suspend,
    Resume,
    Complete,
    Skip,       ///< autoskip and manualskip
    Withdraw,   ///< of an activity that hasn't been started
    Abort,      ///< ate_abort: of an activity at work
    AbortCase,  ///< pi_abort
    Unknown,
};

/// In any case of letters.
XesTransition transitionOf(const std::string& word);

/// Name of the activity of events that name none.
inline constexpr const char* NoActivityName = "(no activity)";

/// What has to be known of a whole log before its events can be played, and what it lacks.
struct XesSurvey {
    std::size_t cases = 0;
    std::size_t emptyCases = 0;
    std::size_t events = 0;
    std::size_t withoutActivity = 0;
    std::size_t withoutResource = 0;
    std::size_t withoutTime = 0;
    std::size_t unreadableTimes = 0;
    std::size_t unknownTransitions = 0;
    std::size_t completions = 0;
    std::optional<IsoTime> earliest;

    /// A log without any `complete` has no life cycle in the sense of the standard: each event is a pass.
    [[nodiscard]] bool everyEventIsPass() const { return completions == 0; }

    void add(const XesEvent& event);

    /// The earliest time of the log; a Monday's midnight for a log without times, all of which happens then.
    [[nodiscard]] IsoTime beginning() const;
    /// Time 0 of a replay: midnight before the Monday before the beginning, in milliseconds of the clock that
    /// its writer saw.
    [[nodiscard]] std::int64_t startOfCalendar() const;
};

}  // namespace mero
