#pragma once

#include <string_view>
#include <vector>

#include "platform/interchange/simulation_parameters.h"

namespace mero {

/// Reads the simulation parameters of one process. Their format is told by what the files hold:
///
/// - the JSON document of the open-source simulator Prosimos, one file;
/// - the XML configurations of the open-source simulator Scylla: simulation configurations and at most one
///   global configuration, in any order.
///
/// Throws `DocumentRefused` with file, place and reason.
SimulationParameters readParameterFiles(const std::vector<ImportFile>& files);

}  // namespace mero
