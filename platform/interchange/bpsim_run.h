#pragma once

#include "platform/interchange/simulation_parameters.h"
#include "platform/interchange/xml_document.h"

namespace mero {

/// Reads `ScenarioParameters`: what a run is to be started with, and the unit of times in seconds, which
/// stays as it is where none is named. What can't be read is noted.
void readBpsimRun(const XmlElement& scenarioParameters, SimulationParameters& parameters, double& unit);

}  // namespace mero
