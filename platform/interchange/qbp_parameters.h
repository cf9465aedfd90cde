#pragma once

#include <string_view>

#include "platform/interchange/simulation_parameters.h"
#include "platform/interchange/xml_document.h"

namespace mero {

inline constexpr std::string_view QbpNamespace = "http://www.qbp-simulator.com/Schema201212";

/// Reads the first element `processSimulationInfo` of a BPMN file, with the parameters of the simulators QBP
/// and BIMP. All times are in seconds, whatever unit an element names for display. What can't be read, or has
/// no meaning here, is noted.
SimulationParameters readQbpParameters(const XmlDocument& document);

}  // namespace mero
