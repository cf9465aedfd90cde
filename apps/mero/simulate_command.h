#pragma once

#include <cstdint>
#include <memory>

#include "apps/mero/command.h"
#include "apps/mero/replication_summary.h"
#include "apps/mero/replication_transport.h"
#include "apps/mero/repository_file.h"
#include "apps/mero/run_options.h"
#include "apps/mero/run_report.h"
#include "platform/engine/simulation.h"

namespace mero {

/// Simulates the processes of a repository under the eyes of its agents, once or in replications.
class SimulateCommand final : public Command {
public:
    /// One run, or replications on this machine.
    SimulateCommand() = default;
    /// Replications only, which `shared` brings to processors. It has to outlive this.
    explicit SimulateCommand(ReplicationTransport& shared) : transport(&shared) {}

    CLI::App* describe(CLI::App& program) override;
    [[nodiscard]] Result<void> checkUsage() const override;
    Result<void> run(Console& console) override;

private:
    /// What both kinds of run begin with.
    struct Prepared {
        std::unique_ptr<RepositoryFile> file;
        RunPlan plan;
        Simulation simulation;
    };

    [[nodiscard]] Result<void> checkReplications() const;
    [[nodiscard]] SimulationSettings settingsOf(const RunPlan& plan) const;
    [[nodiscard]] Result<Prepared> prepare(const Console& console) const;
    [[nodiscard]] Result<void> runOnce(const Prepared& prepared, RunTiming& timing,
                                       const Console& console) const;
    [[nodiscard]] Result<void> runReplications(const Prepared& prepared, RunTiming& timing,
                                               const Console& console) const;
    [[nodiscard]] RunDescription describeSimulation(const Prepared& prepared,
                                                    const RunSummary& summary) const;
    [[nodiscard]] std::size_t jobCount() const;

    RunOptions options;
    std::uint64_t instances = 0;
    std::string until;
    std::string warmUp;
    std::uint64_t seed = 1;
    std::uint64_t replications = 0;  ///< 0 for one run with the seed itself
    std::size_t jobs = 0;            ///< 0 for as many as there are processors
    ReplicationTransport* transport = nullptr;
};

}  // namespace mero
