#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "platform/interchange/bpmn_model.h"

namespace mero {

/// Gives the objects of a model their names: that of the element, else one of its class and its place among
/// the elements of that class; a name that is taken gets a number.
class BpmnNodeNames {
public:
    explicit BpmnNodeNames(const BpmnScope& scope);

    /// To be called for all nodes, in order.
    std::string take(const BpmnNode& node, std::string_view className);

private:
    std::string takeFree(const std::string& wanted);

    std::unordered_set<std::string> given;
    std::unordered_set<std::string> taken;
    std::unordered_map<std::string, int> numbers;  ///< last number tried for a name
    std::unordered_map<std::string, int> positions;
};

}  // namespace mero
