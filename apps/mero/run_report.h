#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "apps/mero/measured_run.h"

namespace mero {

/// Seconds of the stages of a run.
class RunTiming {
public:
    /// Ends the stage before.
    void begin(const char* stage);
    /// Ends the last stage and tells all.
    void tell(std::uint64_t events, const Console& console);

private:
    using Clock = std::chrono::steady_clock;
    struct Stage {
        const char* name;
        double seconds;
    };

    void endStage();

    std::vector<Stage> stages;
    Clock::time_point started;
};

/// Prints the results of one run in the form asked for, and draws their pictures. Pictures that fail are an
/// error; the results are printed all the same.
Result<void> printResults(const RunResults& results, const RunOptions& options, const RunDescription& run,
                          const Repository& repository, const Console& console);

/// The same with the results of replications.
Result<void> printReplications(const std::vector<ResultTable>& tables, bool hasAgents,
                               const RunOptions& options, const RunDescription& run,
                               const Repository& repository, const Console& console);

}  // namespace mero
