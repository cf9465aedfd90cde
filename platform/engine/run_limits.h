#pragma once

#include <cstdint>

#include "platform/engine/process_runner.h"
#include "platform/engine/simulation_settings.h"

namespace mero {

/// What ends a run that would go on for ever, and how it is told.
struct RunLimits {
    /// Up to here every whole second can be told apart in the clock.
    static constexpr double Time = 0x1p53;
    static constexpr auto TimeReport = "the run takes more time than can be counted in seconds";
    /// A run that is only limited by time ends after so many instances that take no time.
    static constexpr std::uint64_t Timeless = 100'000;
    static constexpr auto TimelessReport =
        "the instances take no time, so that the end of the run is never reached";
    static constexpr auto WarmUpReport = "the run ends within the warm-up, so that nothing is measured";
    /// Instances that messages start at the same time.
    static constexpr std::uint64_t StartedAtOnce = 100'000;
    static constexpr auto StartedAtOnceReport =
        "messages start instances at the same time without end, so that the run is ended";
    /// Instances in a row, each started by a message of the one before, of a run without an end in time.
    static constexpr std::uint64_t Generations = 100'000;
    static constexpr auto GenerationsReport =
        "instances start each other by messages without end, so that the run is ended";
    static constexpr std::uint64_t ProgressInterval = 1000;
};

inline void takeCounts(const RunnerCounts& counts, RunSummary& summary) {
    summary.started = counts.started;
    summary.finished = counts.finished;
    summary.dropped = counts.dropped;
    summary.unfinished = counts.live();
    for (const auto& [reason, count] : counts.dropReasons) {
        summary.reports[reason] += count;
    }
}

}  // namespace mero
