#include "apps/mero/replication_processes.h"
#include "apps/mero/replication_transport.h"

namespace mero {

void runShare(const ReplicationOrder& order, std::uint64_t first, std::uint64_t step) {
    ReplicationProcesses processes(order.jobs, order.work);
    std::uint64_t next = first;
    while (next <= order.count || !processes.isIdle()) {
        if (!order.goesOn()) {
            return;
        }
        if (next <= order.count && !processes.isFull()) {
            if (const Result<void> started = processes.start(next); !started) {
                order.take({next, started.error()});
                return;
            }
            next += step;
            continue;
        }
        for (const FinishedReplication& finished : processes.wait(order.longestWait)) {
            if (!order.take(finished)) {
                return;
            }
        }
    }
}

Result<bool> LocalReplications::run(const ReplicationOrder& order) {
    runShare(order, 1, 1);
    return true;
}

}  // namespace mero
