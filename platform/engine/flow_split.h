#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/engine/process_graph.h"

namespace mero {

/// What kind of gateway a node is; `None` also for every other object.
enum class GatewayKind : std::uint8_t { None, Exclusive, Inclusive, Parallel, EventBased };

/// Sets by which rule tokens leave the node, and the probabilities that its flows act with. All flows and the
/// times and messages of their targets have to be known. The result tells what isn't used as it is given and
/// what was added, each in words that go on from the object's name.
[[nodiscard]] std::vector<std::string> decideSplit(ProcessModel& model, ProcessNode& node,
                                                   GatewayKind gateway);

}  // namespace mero
