#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "apps/mero/replication_transport.h"

namespace mero {

/// Replications that run at the same time, each in a process that begins as a copy of this one: whatever a
/// replication changes in memory ends with it, and a crash costs only that one. Processes that still run when
/// this object goes are ended; they end as well when this process dies.
class ReplicationProcesses {
public:
    using Work = std::function<std::string(std::uint64_t replication)>;

    ReplicationProcesses(std::size_t mostAtOnce, Work replicationWork);
    ReplicationProcesses(const ReplicationProcesses&) = delete;
    ReplicationProcesses& operator=(const ReplicationProcesses&) = delete;
    ~ReplicationProcesses();

    [[nodiscard]] bool isFull() const { return running.size() >= limit; }
    [[nodiscard]] bool isIdle() const { return running.empty(); }
    /// Refused with the system's reason.
    Result<void> start(std::uint64_t number);
    /// Those that have finished; waits for the first one, but no longer than `most`.
    std::vector<FinishedReplication> wait(std::chrono::milliseconds most);

private:
    struct Process;

    std::size_t limit;
    Work work;
    std::vector<std::unique_ptr<Process>> running;
};

}  // namespace mero
