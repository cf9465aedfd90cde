#pragma once

#include "platform/interchange/simulation_parameters.h"
#include "platform/interchange/xml_document.h"

namespace mero {

/// Reads the BPSim elements of a BPMN file, wherever they stand in it: the first scenario counts. What can't
/// be read, or has no meaning here, is noted.
SimulationParameters readBpsimParameters(const XmlDocument& document);

}  // namespace mero
