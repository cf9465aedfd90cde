#pragma once

#include <string>

#include "apps/mero/replication_transport.h"

namespace mero {

/// Replications over the ranks of an MPI job: of n ranks, rank r does replications r + 1, r + 1 + n, … and
/// sends their outcomes to rank 0, which takes part in the work. MPI has to be initialised while this lives.
/// Calls MPI from one thread; the processes of replications call none.
class MpiReplications final : public ReplicationTransport {
public:
    MpiReplications();

    [[nodiscard]] bool isFirstRank() const { return rank == 0; }
    /// Whether this rank has met the others, by `run` or `refuse`.
    [[nodiscard]] bool hasMet() const { return met; }

    Result<bool> run(const ReplicationOrder& order) override;
    /// Instead of `run` in a rank that can't: none begins then, and rank 0 tells the reason.
    void refuse(const std::string& reason);

private:
    /// Every rank calls this once. An error if one of them can't begin.
    Result<void> meet(bool canBegin, const std::string& reason);
    void gather(const ReplicationOrder& order);
    void help(const ReplicationOrder& order) const;

    int rank = 0;
    int size = 1;
    bool met = false;
};

}  // namespace mero
