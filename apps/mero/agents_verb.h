#pragma once

#include <memory>
#include <string>
#include <vector>

#include "apps/mero/agents_session.h"
#include "platform/support/result.h"

namespace CLI {
class App;
}

namespace mero {

/// One word behind `mero agents REPO`.
class AgentsVerb {
public:
    AgentsVerb() = default;
    AgentsVerb(const AgentsVerb&) = delete;
    AgentsVerb& operator=(const AgentsVerb&) = delete;
    virtual ~AgentsVerb() = default;

    virtual CLI::App* describe(CLI::App& command) = 0;
    /// Whether the repository is to be saved behind it.
    [[nodiscard]] virtual bool changesRepository() const = 0;
    [[nodiscard]] virtual Result<void> checkUsage() const { return {}; }
    virtual Result<void> run(AgentsSession& session) = 0;
};

/// list, show, check
[[nodiscard]] std::vector<std::unique_ptr<AgentsVerb>> makeViewingVerbs();
/// add, set, remove, activate, deactivate
[[nodiscard]] std::vector<std::unique_ptr<AgentsVerb>> makeChangingVerbs();

}  // namespace mero
