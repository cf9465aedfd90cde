#include <iostream>
#include <mpi.h>
#include <sstream>
#include <string>
#include <vector>

#include "apps/mero-mpi/mpi_replications.h"
#include "apps/mero/run_mero.h"

namespace {

/// The only rank that prints is the first. MPI gathers its output, so that no rank has a terminal.
int runRank(const std::vector<std::string>& arguments) {
    mero::MpiReplications replications;
    std::ostringstream silent;
    std::ostringstream told;
    const bool prints = replications.isFirstRank();
    mero::Console console{prints ? std::cout : silent, prints ? std::cerr : told};
    const int status = mero::runMeroReplications(arguments, console, replications);
    if (status != mero::ExitDone && !replications.hasMet()) {
        replications.refuse(told.str());
    }
    // The job has the status of the first rank: that of another one would only be reported once more.
    return prints ? status : mero::ExitDone;
}

}  // namespace

int main(int count, char** values) {
    std::ios::sync_with_stdio(false);
    MPI_Init(&count, &values);
    const int status = runRank(std::vector<std::string>(values + 1, values + count));
    std::cout.flush();
    MPI_Finalize();
    return status;
}
