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
};

/// A repository with one process of tasks and agents on it, in a run of the path analysis.
class AgentRun {
public:
    /// `definition`: text of the process agent, "AGENT" included.
    AgentRun(const RunShape& shape, const std::string& definition);
    AgentRun(const AgentRun&) = delete;
    AgentRun& operator=(const AgentRun&) = delete;
    ~AgentRun();

    /// Plays the whole trace, between a start and an end of the run.
    void play();
    /// Plays the first `count` events behind the start of the run.
    void playFirst(std::size_t count);
    [[nodiscard]] std::size_t size() const { return trace.size(); }

private:
    mero::Repository repository;
    std::unique_ptr<mero::RepositoryServices> services;
    std::unique_ptr<MeroAgentManagement> management;
    mero::ControlComponent control;
    mero::EventTrace trace;
};
