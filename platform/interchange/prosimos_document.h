#pragma once

#include <string_view>

#include "platform/interchange/document_node.h"
#include "platform/interchange/simulation_parameters.h"

namespace mero {

/// Reads simulation parameters in the JSON format of the open-source simulator Prosimos: resource profiles
/// become roles, resources crews. Throws `DocumentRefused` with path and reason; `source` names the file in
/// the places of the parameters.
SimulationParameters readProsimosDocument(const DocumentNode& root, std::string_view source);

}  // namespace mero
