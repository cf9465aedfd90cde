#pragma once

#include <cstdint>
#include <vector>

#include "platform/engine/holders.h"
#include "platform/engine/process_graph.h"
#include "platform/engine/random.h"
#include "platform/engine/staff_plan.h"

namespace mero {

/// Names a worker and a resource for each pass, as if they were never busy: each of the candidates of a rule
/// is equally likely, drawn from a stream of the activity's own, so that what one activity draws leaves the
/// others as they were.
class NamedStaff {
public:
    NamedStaff(const StaffPlan& staffPlan, const ProcessGraph& graph, std::uint64_t runSeed);

    [[nodiscard]] const StaffPlan& plan() const { return staff; }
    Holders choose(std::uint32_t node);

private:
    static std::uint32_t chooseOf(const std::vector<std::uint32_t>& candidates, RandomStream& random);

    const StaffPlan& staff;
    std::vector<RandomStream> workerStreams;  ///< by node
    std::vector<RandomStream> resourceStreams;
};

}  // namespace mero
