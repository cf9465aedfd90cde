#pragma once

#include <cstdint>

#include "apps/mero/console.h"
#include "apps/mero/replication_summary.h"
#include "apps/mero/replication_transport.h"
#include "apps/mero/run_options.h"
#include "platform/engine/simulation.h"

namespace mero {

/// Independent runs of one simulation, each with a seed of its own (`seedOfReplication`), and what they give
/// together. Histories belong to one run and aren't kept.
class ReplicatedSimulation {
public:
    /// All references have to outlive this. `models` is changed in the processes of the replications alone.
    ReplicatedSimulation(Repository& models, const Simulation& preparedSimulation,
                         const RunOptions& runOptions, const RunPlan& runPlan, std::uint64_t firstSeed)
        : repository(models),
          simulation(preparedSimulation),
          options(runOptions),
          plan(runPlan),
          seed(firstSeed) {}

    /// Does `count` replications. An error tells the replication that failed; nothing is left running. False
    /// in a process that only helps another one, which has the summary.
    Result<bool> run(ReplicationTransport& transport, std::uint64_t count, std::size_t jobs,
                     ReplicationSummary& summary, const Console& console) const;

private:
    [[nodiscard]] ReplicationOutcome replicate(std::uint64_t number) const;

    Repository& repository;
    const Simulation& simulation;
    const RunOptions& options;
    const RunPlan& plan;
    std::uint64_t seed;
};

}  // namespace mero
