#pragma once

#include <map>

#include "platform/diagram/process_diagram.h"

namespace mero {

/// Fills in how often each sequence flow was taken, as far as that follows from how often the shapes were
/// executed: what comes into a shape goes out of it, at once where it is parallel and one way where it
/// isn't. Nothing follows for inclusive gateways, for repeated activities, and behind activities that can be
/// interrupted. What isn't in `executions` is taken as not measured.
void countFlows(ProcessDiagram& diagram, const std::map<MeroId, double>& executions);

/// The largest count of all flows; 0 if none is known.
[[nodiscard]] double largestFlow(const ProcessDiagram& diagram);

}  // namespace mero
