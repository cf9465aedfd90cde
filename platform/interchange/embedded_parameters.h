#pragma once

#include <string_view>

#include "platform/interchange/simulation_parameters.h"
#include "platform/interchange/xml_document.h"

namespace mero {

/// True for the namespaces of elements that `readEmbeddedParameters` reads.
bool isParameterNamespace(std::string_view uri);

/// Reads the simulation parameters that a BPMN file holds in extension elements, wherever they stand in it;
/// empty where there are none. Throws `DocumentRefused`.
SimulationParameters readEmbeddedParameters(const XmlDocument& document);

}  // namespace mero
