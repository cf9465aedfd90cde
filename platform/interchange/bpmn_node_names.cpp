#include "platform/interchange/bpmn_node_names.h"

#include <fmt/format.h>

namespace mero {

BpmnNodeNames::BpmnNodeNames(const BpmnScope& scope) {
    for (const BpmnNode& node : scope.nodes) {
        given.insert(node.name);
    }
}

std::string BpmnNodeNames::take(const BpmnNode& node, std::string_view className) {
    const int position = ++positions[std::string(className)];
    if (!node.name.empty()) {
        return takeFree(node.name);
    }
    std::string made = fmt::format("{} {}", className, position);
    return takeFree(given.contains(made) ? made + " (2)" : made);
}

std::string BpmnNodeNames::takeFree(const std::string& wanted) {
    int& number = numbers.try_emplace(wanted, 1).first->second;
    std::string name = wanted;
    while (!taken.insert(name).second) {
        name = fmt::format("{} ({})", wanted, ++number);
    }
    return name;
}

}  // namespace mero
