#pragma once

#include <memory>
#include <string>
#include <vector>

#include "apps/mero/repository_file.h"
#include "component/management/agent_management.h"
#include "platform/interchange/import_report.h"
#include "platform/repository/repository_services.h"

namespace mero {

/// An open repository with its models and agents: what the windows of the workbench show and change. There is
/// one at a time, since it answers the host contract. Every change is saved at once.
class Workspace {
public:
    enum class AgentState { Active, Inactive, Invalid };

    struct AgentEntry {
        MeroId id = MeroNoId;
        std::string name;
        AgentState state = AgentState::Active;
    };
    struct ModelEntry {
        MeroId id = MeroNoId;
        std::string name;
        bool isProcess = true;
        std::vector<AgentEntry> agents;
    };

    /// `openFile` is open and not null.
    Workspace(std::string filePath, std::unique_ptr<RepositoryFile> openFile);

    [[nodiscard]] const std::string& path() const { return filePath; }
    [[nodiscard]] Repository& repository() { return file->repository(); }
    [[nodiscard]] MeroAgentManagement& management() { return agents; }

    /// A predefined agent of the application library.
    struct AgentTemplate {
        MeroId id = MeroNoId;
        std::string name;
        std::string info;
    };

    /// All models in the order of their making, each with its agents.
    [[nodiscard]] std::vector<ModelEntry> models();
    [[nodiscard]] std::string nameOf(MeroId id);

    /// Adds what a file holds; see `importFile`.
    Result<ImportReport> import(const std::string& name, const std::vector<std::string>& parameterFiles);
    /// Makes an agent in a process model that measures how often all activities are executed, how long they
    /// take and what they cost; gives its identifier.
    Result<MeroId> addMeasures(MeroId model);
    /// What the library offers for a model and an analysis, the agent without measures first.
    [[nodiscard]] std::vector<AgentTemplate> templatesFor(MeroId model, int analysis) const;
    /// Makes an agent of a template; gives its identifier.
    Result<MeroId> addAgent(MeroId model, int analysis, MeroId agentTemplate);
    Result<void> setActive(MeroId agent, bool isActive);

private:
    std::string filePath;
    std::unique_ptr<RepositoryFile> file;
    RepositoryServices services;
    MeroAgentManagement agents;
};

}  // namespace mero
