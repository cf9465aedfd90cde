#pragma once

#include <cstdint>

#include "apps/mero/command.h"
#include "apps/mero/run_options.h"
#include "platform/engine/simulation_settings.h"
#include "platform/interchange/result_table.h"

namespace mero {

/// Simulates the processes of a repository under the eyes of its agents.
class SimulateCommand final : public Command {
public:
    CLI::App* describe(CLI::App& program) override;
    [[nodiscard]] Result<void> checkUsage() const override;
    Result<void> run(Console& console) override;

private:
    [[nodiscard]] RunDescription descriptionOf(const RunSummary& summary, const RunPlan& plan,
                                               const Repository& repository) const;

    RunOptions options;
    std::uint64_t instances = 0;
    std::string until;
    std::string warmUp;
    std::uint64_t seed = 1;
};

}  // namespace mero
