#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/engine/distribution.h"
#include "platform/engine/process_graph.h"
#include "platform/engine/shift_plan.h"
#include "platform/repository/repository.h"
#include "platform/support/result.h"

namespace mero {

/// How instances of the main models come at their start events: by `Arrival`, the distribution of the
/// seconds between two of them, or else by `Quantity` per `Time period`, evenly over the working time of the
/// `Arrival calendar`, so that on the average so many come in a period. A year has 365 days, a month the
/// twelfth part of it.
class ArrivalPlan {
public:
    struct Source {
        std::uint32_t main = 0;   ///< index of the main model in the run
        std::uint32_t model = 0;  ///< index in the graph
        std::uint32_t node = 0;
        std::optional<Distribution> gap;  ///< seconds between arrivals; without it:
        double workGap = 0.0;             ///< seconds of working time between arrivals
        std::optional<ShiftPlan> calendar;
    };

    /// Refused: distributions and calendars that can't be read, calendars without working time, and a run in
    /// which nothing says when instances arrive. Main models of which none arrives are told in `problems`.
    static Result<ArrivalPlan> compile(const Repository& repository, const ProcessGraph& graph,
                                       std::int64_t startOffset);

    [[nodiscard]] const std::vector<Source>& sources() const { return sourceList; }
    /// One sentence each.
    [[nodiscard]] const std::vector<std::string>& problems() const { return oddities; }

private:
    std::vector<Source> sourceList;
    std::vector<std::string> oddities;
};

}  // namespace mero
