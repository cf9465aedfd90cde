#pragma once

#include <map>
#include <string>
#include <vector>

#include "apps/mero/console.h"
#include "apps/mero/replication_outcome.h"
#include "apps/mero/replication_tables.h"
#include "platform/engine/simulation_settings.h"

namespace mero {

/// What all replications gave. Outcomes may come in any order and are folded in that of their numbers, so
/// that no bit of the results depends on who was faster; behind a gap they wait.
class ReplicationSummary {
public:
    explicit ReplicationSummary(double confidence) : folded(confidence) {}

    void add(ReplicationOutcome outcome);

    /// Of the replications before the first gap.
    [[nodiscard]] const std::vector<RunRecord>& runs() const { return records; }
    [[nodiscard]] std::vector<ResultTable> tables() const { return folded.tables(); }
    /// Sums over all runs; the fingerprint is over theirs.
    [[nodiscard]] const RunSummary& totals() const { return sums; }
    [[nodiscard]] bool hasAgents() const { return agentsSeen; }
    /// Each message of the replications once, with the replications that it is of.
    void tellMessages(const Console& console) const;

private:
    void fold(ReplicationOutcome& outcome);

    std::map<std::uint64_t, ReplicationOutcome> waiting;
    std::vector<RunRecord> records;
    RunSummary sums;
    ReplicationTables folded;
    std::vector<std::pair<std::string, std::vector<std::uint64_t>>> messages;
    bool agentsSeen = false;
};

}  // namespace mero
