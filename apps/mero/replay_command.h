#pragma once

#include <string>

#include "apps/mero/command.h"
#include "apps/mero/run_options.h"

namespace mero {

/// Plays a recorded run to the agents.
class ReplayCommand final : public Command {
public:
    CLI::App* describe(CLI::App& program) override;
    [[nodiscard]] Result<void> checkUsage() const override { return options.check(); }
    Result<void> run(Console& console) override;

private:
    RunOptions options;
    std::string eventsFile;
};

}  // namespace mero
