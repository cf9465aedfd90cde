#include "platform/engine/named_staff.h"

#include <algorithm>

namespace mero {

NamedStaff::NamedStaff(const StaffPlan& staffPlan, const ProcessGraph& graph, std::uint64_t runSeed)
    : staff(staffPlan) {
    for (const ProcessModel& model : graph.models()) {
        for (const ProcessNode& node : model.nodes) {
            workerStreams.emplace_back(runSeed, "performer/" + node.streamName);
            resourceStreams.emplace_back(runSeed, "resource/" + node.streamName);
        }
    }
}

Holders NamedStaff::choose(std::uint32_t node) {
    Holders holders;
    const std::uint32_t number = staff.needOf(node);
    if (number == StaffPlan::None) {
        return holders;
    }
    const StaffPlan::Need& need = staff.needs()[number];
    if (need.workerGroup != StaffPlan::None) {
        holders.worker = chooseOf(staff.workers().groups[need.workerGroup], workerStreams[node]);
    }
    if (need.resourceGroup != StaffPlan::None) {
        holders.resource = chooseOf(staff.resources().groups[need.resourceGroup], resourceStreams[node]);
    }
    return holders;
}

std::uint32_t NamedStaff::chooseOf(const std::vector<std::uint32_t>& candidates, RandomStream& random) {
    const auto drawn = static_cast<std::size_t>(random.nextUnit() * static_cast<double>(candidates.size()));
    return candidates[std::min(drawn, candidates.size() - 1)];
}

}  // namespace mero
