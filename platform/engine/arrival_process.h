#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/engine/arrival_plan.h"
#include "platform/engine/random.h"

namespace mero {

/// Draws the arrivals of a run. The first instance of a start event comes at the start of the run. The next
/// one comes when the gap has passed; with a calendar, at the beginning of the next working time if that is
/// outside of it.
class ArrivalProcess {
public:
    struct Arrival {
        std::uint32_t model;  ///< index in the graph
        std::uint32_t node;   ///< start event
    };

    /// So many instances of each main model arrive; 0 for no limit.
    ArrivalProcess(const ArrivalPlan& arrivalPlan, const ProcessGraph& graph, std::uint64_t runSeed,
                   std::uint64_t instancesOfModel);

    /// Infinity when no more come.
    [[nodiscard]] double nextTime() const { return next; }
    /// What arrives at `nextTime()`, which moves on.
    Arrival take();

private:
    struct State {
        RandomStream random;
        double time;
    };

    void moveOn(std::size_t source);
    void findNext();

    const ArrivalPlan& plan;
    std::uint64_t limit;
    std::vector<State> states;            ///< by source
    std::vector<std::uint64_t> arrivals;  ///< by main model
    std::size_t nextSource = 0;
    double next = 0.0;
};

}  // namespace mero
