#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/mero/console.h"
#include "apps/mero/message_printer.h"
#include "component/management/agent_management.h"
#include "platform/repository/repository.h"
#include "platform/repository/repository_services.h"

namespace mero {

/// An open repository with its agents, for the commands on agents. Changes are in memory until the command
/// saves them.
class AgentsSession {
public:
    AgentsSession(Repository& models, const Console& console);

    [[nodiscard]] const Console& console() const { return target; }
    [[nodiscard]] Repository& repository() { return content; }
    [[nodiscard]] MeroAgentManagement& management() { return agents; }
    [[nodiscard]] MessagePrinter& messages() { return printer; }

    [[nodiscard]] std::string nameOf(MeroId id) const;
    /// The model's name for an object.
    [[nodiscard]] std::string modelNameOf(MeroId objectId) const;
    /// All agents by model; those of one model if its name is given.
    Result<std::vector<MeroId>> findAgents(const std::string& model) const;
    /// The agent of this name; without a model the name has to be the only one of its kind.
    Result<MeroId> findAgent(const std::string& model, const std::string& name) const;
    Result<MeroId> findModel(const std::string& model) const;
    /// Reads the agent's texts, which repairs what can be repaired and tells it.
    Result<MeroSuperAgent*> open(MeroId agentId);
    /// An error that `status` and the messages since `errorsBefore` mean; success if they mean none.
    Result<void> judge(int status, int errorsBefore, const std::string& what) const;

private:
    Repository& content;
    const Console& target;
    MessagePrinter printer;
    RepositoryServices services;
    MeroAgentManagement agents;
};

}  // namespace mero
