#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "apps/mero/command.h"

namespace mero {

class AgentsVerb;

/// Everything about the agents in the models.
class AgentsCommand final : public Command {
public:
    AgentsCommand();
    ~AgentsCommand() override;

    CLI::App* describe(CLI::App& program) override;
    [[nodiscard]] Result<void> checkUsage() const override;
    Result<void> run(Console& console) override;

private:
    [[nodiscard]] AgentsVerb& chosenVerb() const;

    std::string repositoryFile;
    std::vector<std::pair<CLI::App*, std::unique_ptr<AgentsVerb>>> verbs;
};

}  // namespace mero
