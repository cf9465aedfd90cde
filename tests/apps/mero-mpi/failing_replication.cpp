#include <csignal>
#include <iostream>
#include <mpi.h>
#include <thread>

#include "apps/mero-mpi/mpi_replications.h"

/// A rank of a job whose replication 2 dies, whose replication 3 sends more than a message holds at once, and
/// whose others would take longer than anybody waits.
int main(int count, char** values) {
    MPI_Init(&count, &values);
    {
        mero::MpiReplications replications;
        mero::ReplicationOrder order;
        order.count = 9;
        order.goesOn = [] { return true; };
        order.work = [](std::uint64_t number) -> std::string {
            if (number == 2) {
                // Long enough for 3 to have come on a machine that is busy with other things.
                std::this_thread::sleep_for(std::chrono::seconds(2));
                std::raise(SIGKILL);
            }
            if (number != 3) {
                std::this_thread::sleep_for(std::chrono::minutes(10));
            }
            return std::string(10U << 20, 'x');
        };
        order.take = [](const mero::FinishedReplication& finished) {
            std::cout << finished.number << ": "
                      << (finished.outcome ? std::to_string(finished.outcome.value().size())
                                           : finished.outcome.error().text)
                      << std::endl;
            return finished.outcome.isGood();
        };
        const mero::Result<bool> run = replications.run(order);
        if (replications.isFirstRank()) {
            std::cout << (run ? "ended" : run.error().text) << std::endl;
        }
    }
    MPI_Finalize();
    return 0;
}
