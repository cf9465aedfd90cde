#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "platform/support/result.h"

namespace mero {

/// What became of one replication: its outcome as bytes, or why there is none.
struct FinishedReplication {
    std::uint64_t number = 0;
    Result<std::string> outcome;
};

/// Replications 1 to `count` of a run, and who does them.
struct ReplicationOrder {
    std::uint64_t count = 0;
    std::size_t jobs = 1;  ///< processes at once on each machine

    /// Does one replication; called in a process of its own, which ends behind it.
    std::function<std::string(std::uint64_t replication)> work;
    /// Takes what has finished, in any order; false ends all.
    std::function<bool(const FinishedReplication&)> take;
    /// Asked before every wait; false ends all.
    std::function<bool()> goesOn;
    std::chrono::milliseconds longestWait{50};
};

/// Brings replications to processors and their outcomes back.
class ReplicationTransport {
public:
    ReplicationTransport() = default;
    ReplicationTransport(const ReplicationTransport&) = delete;
    ReplicationTransport& operator=(const ReplicationTransport&) = delete;
    virtual ~ReplicationTransport() = default;

    /// Returns when all are done or ended. False in a process that only helps another one: that one has the
    /// outcomes, and this one nothing to print. An error if they can't be begun.
    virtual Result<bool> run(const ReplicationOrder& order) = 0;
};

/// On this machine.
class LocalReplications final : public ReplicationTransport {
public:
    Result<bool> run(const ReplicationOrder& order) override;
};

/// Does replications `first`, `first + step`, … of the order on this machine.
void runShare(const ReplicationOrder& order, std::uint64_t first, std::uint64_t step);

}  // namespace mero
