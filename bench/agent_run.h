#pragma once

#include <benchmark/benchmark.h>
#include <memory>
#include <string>

#include "component/management/agent_management.h"
#include "platform/engine/control_component.h"
#include "platform/engine/event_trace.h"
#include "platform/engine/trace_replay.h"
#include "platform/repository/repository.h"
#include "platform/repository/repository_services.h"

/// Shape of a synthetic run: so many instances alive at once, each passing `objects` tasks `passes` times in
/// turn.
struct RunShape {
    std::size_t events = 1'000'000;
    std::size_t liveInstances = 1'000;
    std::size_t passes = 3;
    std::size_t objects = 5;
    std::size_t objectsOfInstance =
        0;  ///< an instance passes so many of the objects, the next one others; 0 for all
    int analysis = 1;
    /// With workers, each pass has a key of its own and is assigned to one of them, in turn.
    std::size_t workers = 0;

    /// From the start of an instance to its end.
    [[nodiscard]] std::size_t eventsOfInstance() const;
    /// Events after which as many instances have ended as live at a time, and every object has been passed.
    [[nodiscard]] std::size_t eventsOfFirstRound() const;
};

/// A repository with one process of tasks and an agent on it, and a working environment; and the events of a
/// run.
struct BenchScenario {
    /// `definition`: text of the process agent, "AGENT" included.
    BenchScenario(const RunShape& shape, const std::string& definition);

    mero::Repository repository;
    MeroId model = MeroNoId;
    MeroId environment = MeroNoId;
    int analysis;
    std::size_t eventsOfFirstRound;
    mero::EventTrace trace;
};

/// A run of a scenario, which isn't owned; one at a time.
class AgentRun {
public:
    explicit AgentRun(BenchScenario& played);
    AgentRun(const AgentRun&) = delete;
    AgentRun& operator=(const AgentRun&) = delete;
    ~AgentRun();

    /// Plays the whole trace, between a start and an end of the run; again after a restart. `progress` as
    /// that of `mero::replayTrace`.
    void play(const mero::ReplayProgress& progress = {});
    /// Reads the results of all sub-agents; how many values there are.
    std::size_t readResults();
    /// Plays the first `count` events behind the start of the run.
    void playFirst(std::size_t count);
    [[nodiscard]] std::size_t size() const { return scenario.trace.size(); }

private:
    BenchScenario& scenario;
    mero::RepositoryServices services;
    std::unique_ptr<MeroAgentManagement> management;
    mero::ControlComponent control;
    bool wasPlayed = false;
};

/// Plays two scenarios in turn, so that a machine that is faster at times is so for both. Reports the
/// nanoseconds of an event in each and how many times as much the larger takes, each at its best, behind
/// the first round: in that the memory for instances and results is made, once for a run of any length. What
/// an event costs there is reported as well.
void compareRuns(benchmark::State& state, BenchScenario& small, BenchScenario& large);
