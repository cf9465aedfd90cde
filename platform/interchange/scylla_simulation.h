#pragma once

#include "platform/interchange/scylla_global.h"
#include "platform/interchange/simulation_parameters.h"
#include "platform/interchange/xml_document.h"

namespace mero {

/// Adds what the simulation configurations of a document say. Times of day are those of the zone of the
/// global configuration. Throws `DocumentRefused`, for instance where a resource isn't in the global
/// configuration; without such a file resources are noted only.
void readScyllaSimulation(const XmlDocument& document, const ScyllaGlobal& global,
                          SimulationParameters& parameters);

}  // namespace mero
