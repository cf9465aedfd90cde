#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/engine/control_component.h"
#include "platform/engine/process_graph.h"
#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// Kinds of run, with the numbers that the agents know them by.
enum class Analysis { Path = 1, Capacity = 2, StaticWorkLoad = 3, NonStaticWorkLoad = 4 };

struct SimulationSettings {
    Analysis analysis = Analysis::Path;
    std::vector<MeroId> models;         ///< main models; what they call comes along
    MeroId environment = MeroNoId;      ///< working environment; 0 for none
    std::uint64_t instances = 0;        ///< of each main model; 0 for no limit
    std::optional<std::int64_t> until;  ///< the run ends at this time, in seconds, at the latest
    std::int64_t warmUp = 0;            ///< seconds before the observation of a static work load begins
    std::uint64_t seed = 1;
    TimeBase timeBase;
};

struct RunSummary {
    std::uint64_t started = 0;  ///< main process instances
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

/// Simulates the processes of a repository. So far the path analysis: instances run one by one, each from the
/// time at which the one before ended; with several main models one instance of each in turn. A pass through
/// an activity is reached, worked on and finished; nobody works on it and nothing has to be waited for but
/// its waiting time. Two runs with equal settings send the same events.
class Simulation {
public:
    /// Refuses settings without an end, and models that can't be compiled (see `ProcessGraph`). The
    /// repository isn't needed afterwards.
    static Result<Simulation> prepare(const Repository& repository, const SimulationSettings& settings);

    /// What is odd in the models and how it is dealt with, one sentence each.
    [[nodiscard]] const std::vector<std::string>& problems() const { return graph.problems(); }

    /// Sends all events of a run, from its start to its end, also when it is cancelled. Runs with another
    /// `replication` are independent of each other.
    [[nodiscard]] RunSummary run(ControlComponent& control, const RunProgress& progress = {},
                                 std::uint64_t replication = 0) const;

private:
    Simulation(SimulationSettings runSettings, ProcessGraph processGraph)
        : settings(std::move(runSettings)), graph(std::move(processGraph)) {}

    SimulationSettings settings;
    ProcessGraph graph;
};

}  // namespace mero
