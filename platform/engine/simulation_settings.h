#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/engine/process_graph.h"

namespace mero {

/// Kinds of run, with the numbers that the agents know them by.
enum class Analysis { Path = 1, Capacity = 2, StaticWorkLoad = 3, NonStaticWorkLoad = 4 };

/// The work load analyses run on calendar time, with workers that are contended for.
[[nodiscard]] constexpr bool isWorkLoad(Analysis analysis) {
    return analysis == Analysis::StaticWorkLoad || analysis == Analysis::NonStaticWorkLoad;
}

struct SimulationSettings {
    Analysis analysis = Analysis::Path;
    std::vector<MeroId> models;         ///< main models; what they call comes along
    MeroId environment = MeroNoId;      ///< working environment; 0 for none, not used in the path analysis
    std::uint64_t instances = 0;        ///< of each main model; 0 for no limit
    std::optional<std::int64_t> until;  ///< the run ends at this time, in seconds, at the latest
    /// Seconds before the observation of a static work load begins; 0 in all other analyses.
    std::int64_t warmUp = 0;
    /// Seconds from the beginning of the calendars' year to the start of the run; used by the work load
    /// analyses.
    std::int64_t startOffset = 0;
    std::uint64_t seed = 1;
    TimeBase timeBase;
};

/// Seed of the run that is replication 1, 2, … of a seed; replication 0 is the run with the seed itself. For
/// one seed no two replications have the same: mixBits(seed ^ mixBits(replication)).
[[nodiscard]] std::uint64_t seedOfReplication(std::uint64_t seed, std::uint64_t replication);

struct RunSummary {
    std::uint64_t started = 0;  ///< main process instances, also those of a warm-up
    std::uint64_t finished = 0;
    std::uint64_t dropped = 0;      ///< stuck, or beyond a limit
    std::uint64_t unfinished = 0;   ///< open when the run ended
    std::uint64_t events = 0;       ///< of this run
    std::uint64_t fingerprint = 0;  ///< of all events that the control component has seen
    std::int64_t endTime = 0;       ///< seconds
    bool cancelled = false;
    /// What the user should know, with the number of instances that it happened to.
    std::map<std::string, std::uint64_t> reports;
};

/// Asked at least every 1,000 events with started instances and the time of the run; false ends the run.
using RunProgress = std::function<bool(std::uint64_t started, std::int64_t time)>;

}  // namespace mero
