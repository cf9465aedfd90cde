#pragma once

#include <memory>
#include <string>

#include "component/management/agent_management.h"
#include "platform/engine/control_component.h"
#include "platform/engine/event_trace.h"
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
};

/// A repository with one process of tasks and an agent on it, and a working environment, in one run.
class AgentRun {
public:
    /// `definition`: text of the process agent, "AGENT" included.
    AgentRun(const RunShape& shape, const std::string& definition);
    AgentRun(const AgentRun&) = delete;
    AgentRun& operator=(const AgentRun&) = delete;
    ~AgentRun();

    /// Plays the whole trace, between a start and an end of the run; again after a restart.
    void play();
    /// Reads the results of all sub-agents; how many values there are.
    std::size_t readResults();
    /// Plays the first `count` events behind the start of the run.
    void playFirst(std::size_t count);
    [[nodiscard]] std::size_t size() const { return trace.size(); }

private:
    mero::Repository repository;
    std::unique_ptr<mero::RepositoryServices> services;
    std::unique_ptr<MeroAgentManagement> management;
    mero::ControlComponent control;
    mero::EventTrace trace;
    bool wasPlayed = false;
};
