#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "platform/interchange/simulation_parameters.h"
#include "platform/interchange/xml_document.h"

namespace mero {

/// What simulation configurations need of the global configuration beside them.
struct ScyllaGlobal {
    bool given = false;
    std::optional<std::int64_t> zoneOffset;  ///< milliseconds ahead of UTC, of timetables
    std::string assignmentOrder;             ///< words such as "priority,simulationTime"; may be empty
    std::map<std::string, int> resources;    ///< number of workers by identifier
};

/// Reads a global configuration: every `dynamicResource` becomes a crew and a role, its instances workers.
/// Throws `DocumentRefused`.
ScyllaGlobal readScyllaGlobal(const XmlDocument& document, SimulationParameters& parameters);

}  // namespace mero
